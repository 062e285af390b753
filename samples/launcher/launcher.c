/*
 * tqpmsnd           serves the user's print jobs until it is told to end
 * tqpmsnd --quit    has the user's launcher end once it has done what it has in hand; waits for it
 *
 * The launcher is the one program of the product that runs for each user. The library, in the
 * process that prints, starts it and tells it of jobs, through objects named after the user:
 *
 *   _mutex   stands while a launcher runs
 *   _sm      holds the record of one message
 *   _event   the library sets it: a message is in the record
 *   _end     the launcher sets it: the message is taken
 *
 * This one makes a PDF file of each job that is PostScript, with quillpress.exe from its own folder
 * or with the command that the printer's setting "ConvertCmdLine" names. While the library waits
 * for the answer, no other job of the machine moves: so it is given at once, and a thread does the
 * work. Start reading at serve.
 */
#include <stdatomic.h>
#include <stdbool.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>
/* The headers below build on <windows.h>. */
#include <lmcons.h>
#include <strsafe.h>

#include "umpd/LauncherStruct.h"

enum {
  pathSize = launcherFieldSize + 8, /* with room for a number and another extension */
  settingSize = 2048,
  commandSize = 32767,         /* what the system takes */
  conversionTime = 120 * 1000, /* milliseconds, as all times here */
  lookAgain = 50,
  quietTime = 1000
};

/* A job whose file is to become a PDF file. */
typedef struct Job {
  wchar_t pdf[pathSize];
  wchar_t postScript[pathSize]; /* where its bytes are meanwhile, if they could be moved */
  bool isAside;
  wchar_t log[pathSize]; /* what the converter says */
  wchar_t convertCmdLine[settingSize];
  wchar_t command[commandSize];
} Job;

static atomic_int jobsInHand;

static void complain(const wchar_t* what, const wchar_t* path) {
  wchar_t text[pathSize + 256];
  StringCchPrintfW(text, ARRAYSIZE(text), L"%ls\n%ls", what, path);
  MessageBoxW(NULL, text, L"Quillpress", MB_OK | MB_ICONWARNING | MB_SETFOREGROUND);
}

/* Narrow text of a record as wide text of the same number of characters at most. */
static void widen(const char* narrow, wchar_t wide[launcherFieldSize]) {
  if (MultiByteToWideChar(CP_ACP, 0, narrow, -1, wide, launcherFieldSize) == 0) {
    wide[0] = L'\0';
  }
}

static bool beginsWith(const wchar_t* path, const char* mark) {
  char start[8] = "";
  DWORD length = 0;
  const HANDLE file =
      CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, NULL,
                  OPEN_EXISTING, 0, NULL);
  if (file == INVALID_HANDLE_VALUE) {
    return false;
  }
  const bool isRead = ReadFile(file, start, sizeof start, &length, NULL);
  CloseHandle(file);
  return isRead && length >= strlen(mark) && memcmp(start, mark, strlen(mark)) == 0;
}

/* The printer's settings are in a key that is named as the printer, with commas for backslashes. */
static bool readConvertCmdLine(const char* printerName, wchar_t* setting) {
  wchar_t name[launcherFieldSize];
  wchar_t key[launcherFieldSize + 32];
  DWORD size = settingSize * sizeof *setting;
  widen(printerName, name);
  for (wchar_t* at = name; *at != L'\0'; ++at) {
    if (*at == L'\\') {
      *at = L',';
    }
  }
  StringCchPrintfW(key, ARRAYSIZE(key), L"Software\\Quillpress\\%ls", name);
  return RegGetValueW(HKEY_CURRENT_USER, key, L"ConvertCmdLine", RRF_RT_REG_SZ, NULL, setting,
                      &size) == ERROR_SUCCESS;
}

/* Without the setting, the program that is installed with the launcher converts. */
static bool findConverter(const char* printerName, wchar_t* setting) {
  wchar_t folder[MAX_PATH];
  if (readConvertCmdLine(printerName, setting)) {
    return true;
  }
  const DWORD length = GetModuleFileNameW(NULL, folder, ARRAYSIZE(folder));
  wchar_t* const name = wcsrchr(folder, L'\\');
  if (length == 0 || length == ARRAYSIZE(folder) || name == NULL) {
    return false;
  }
  *name = L'\0';
  return SUCCEEDED(StringCchPrintfW(setting, settingSize,
                                    L"\"%ls\\quillpress.exe\" convert \"%%1\" \"%%2\"", folder));
}

/* Moves the job's bytes to name.ps, or to name.2.ps and so on: never over a file. An empty file
   keeps the name that they had. The library names no other job meanwhile, as it waits. */
static bool moveAside(Job* job) {
  const int stem = (int)(wcslen(job->pdf) - wcslen(L".pdf"));
  StringCchPrintfW(job->postScript, pathSize, L"%.*ls.ps", stem, job->pdf);
  for (int number = 2; !MoveFileW(job->pdf, job->postScript); ++number) {
    if (GetLastError() != ERROR_ALREADY_EXISTS || number > 99) {
      return false;
    }
    StringCchPrintfW(job->postScript, pathSize, L"%.*ls.%d.ps", stem, job->pdf, number);
  }
  const HANDLE keeper = CreateFileW(job->pdf, GENERIC_WRITE, 0, NULL, CREATE_NEW, 0, NULL);
  if (keeper != INVALID_HANDLE_VALUE) {
    CloseHandle(keeper);
  }
  StringCchPrintfW(job->log, pathSize, L"%ls.log", job->postScript);
  return true;
}

/* The job of the message if there is something to convert. Any other is left as it stands. */
static Job* takeJob(const LauncherStruct* message) {
  Job* const job = calloc(1, sizeof *job);
  if (job == NULL) {
    return NULL;
  }
  widen(message->outputFile, job->pdf);
  const size_t length = wcslen(job->pdf);
  if (length > 4 && _wcsicmp(job->pdf + length - 4, L".pdf") == 0 && beginsWith(job->pdf, "%!") &&
      findConverter(message->printerName, job->convertCmdLine)) {
    job->isAside = moveAside(job);
    return job;
  }
  free(job);
  return NULL;
}

/* The command with the job's files for %1 and %2. */
static bool writeCommand(Job* job) {
  wchar_t* end = job->command;
  size_t room = commandSize;
  for (const wchar_t* at = job->convertCmdLine; *at != L'\0'; ++at) {
    const wchar_t character[] = {*at, L'\0'};
    const wchar_t* piece = character;
    if (wcsncmp(at, L"%1", 2) == 0) {
      piece = job->postScript;
    }
    if (wcsncmp(at, L"%2", 2) == 0) {
      piece = job->pdf;
    }
    if (piece != character) {
      ++at;
    }
    if (FAILED(StringCchCopyExW(end, room, piece, &end, &room, 0))) {
      return false;
    }
  }
  return true;
}

static DWORD awaitProcess(const PROCESS_INFORMATION* process) {
  DWORD status = EXIT_FAILURE;
  if (WaitForSingleObject(process->hProcess, conversionTime) == WAIT_TIMEOUT) {
    TerminateProcess(process->hProcess, EXIT_FAILURE);
  }
  GetExitCodeProcess(process->hProcess, &status);
  CloseHandle(process->hThread);
  CloseHandle(process->hProcess);
  return status;
}

/* Returns the converter's exit status. What it says goes to the log. */
static DWORD runWithLog(Job* job, HANDLE log) {
  STARTUPINFOW startup = {.cb = sizeof startup,
                          .dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES,
                          .wShowWindow = SW_HIDE,
                          .hStdOutput = log,
                          .hStdError = log};
  PROCESS_INFORMATION process = {0};
  if (!writeCommand(job) || !CreateProcessW(NULL, job->command, NULL, NULL, TRUE, CREATE_NO_WINDOW,
                                            NULL, NULL, &startup, &process)) {
    return EXIT_FAILURE;
  }
  return awaitProcess(&process);
}

static DWORD runConverter(Job* job) {
  SECURITY_ATTRIBUTES inherited = {.nLength = sizeof inherited, .bInheritHandle = TRUE};
  const HANDLE log = CreateFileW(job->log, GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                 CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, NULL);
  const DWORD status = runWithLog(job, log);
  if (log != INVALID_HANDLE_VALUE) {
    CloseHandle(log);
  }
  if (status == EXIT_SUCCESS) {
    DeleteFileW(job->log);
  }
  return status;
}

/* The PostScript goes when a PDF file that holds all of it is in its place, and not before. */
static DWORD WINAPI convert(void* argument) {
  Job* const job = argument;
  if (!job->isAside) {
    complain(L"The job could not be moved aside, and is PostScript still:", job->pdf);
  } else {
    const DWORD status = runConverter(job);
    const bool isMade = beginsWith(job->pdf, "%PDF-");
    if (isMade && status == EXIT_SUCCESS) {
      DeleteFileW(job->postScript);
    } else if (isMade) {
      complain(L"The PDF file lacks something of the job, whose PostScript is kept:",
               job->postScript);
    } else {
      DeleteFileW(job->pdf);
      complain(L"The job could not be made a PDF file. Its PostScript is kept:", job->postScript);
    }
  }
  free(job);
  --jobsInHand;
  return 0;
}

static void startConversion(Job* job) {
  ++jobsInHand;
  const HANDLE thread = CreateThread(NULL, 0, convert, job, 0, NULL);
  if (thread != NULL) {
    CloseHandle(thread);
  } else {
    convert(job);
  }
}

/* The name of an object of the channel. */
typedef struct ObjectName {
  wchar_t text[UNLEN + 32];
} ObjectName;

static ObjectName objectName(const wchar_t* ending) {
  wchar_t user[UNLEN + 1] = L"";
  DWORD size = ARRAYSIZE(user);
  GetUserNameW(user, &size);
  ObjectName name;
  StringCchPrintfW(name.text, ARRAYSIZE(name.text), L"Local\\tqpsend_%ls%ls", user, ending);
  return name;
}

/* False if there is no such event, and so nobody who waits for it. */
static bool setEvent(const wchar_t* ending) {
  const HANDLE event = OpenEventW(EVENT_MODIFY_STATE, FALSE, objectName(ending).text);
  if (event == NULL) {
    return false;
  }
  const bool isSet = SetEvent(event);
  CloseHandle(event);
  return isSet;
}

/* The record is copied first and each field ended: any process of the session may write there. */
static void takeMessage(const LauncherStruct* record) {
  LauncherStruct message = *record;
  char* const fields[] = {message.command, message.printerName, message.outputFile};
  for (size_t i = 0; i < ARRAYSIZE(fields); ++i) {
    fields[i][launcherFieldSize - 1] = '\0';
  }

  /* At "startprint" another launcher may show the job's progress. */
  Job* const job = strcmp(message.command, "stopprint") == 0 ? takeJob(&message) : NULL;
  setEvent(L"_end");
  if (job != NULL) {
    startConversion(job);
  }
}

/* Without the mutex no library begins a message; one that has begun will do so within a moment. */
static int serveUntilQuit(const LauncherStruct* record, HANDLE message, HANDLE quit, HANDLE mutex) {
  const HANDLE events[] = {message, quit};
  bool leaving = false;
  for (;;) {
    switch (
        WaitForMultipleObjects(leaving ? 1 : 2, events, FALSE, leaving ? quietTime : INFINITE)) {
      case WAIT_OBJECT_0:
        takeMessage(record);
        break;
      case WAIT_OBJECT_0 + 1:
        CloseHandle(mutex);
        leaving = true;
        break;
      case WAIT_TIMEOUT:
        if (jobsInHand == 0) {
          return EXIT_SUCCESS;
        }
        break;
      default:
        return EXIT_FAILURE;
    }
  }
}

/* The mutex comes last: who finds it may rely on the rest. What is open goes with the process. */
static int serve(void) {
  const HANDLE message = CreateEventW(NULL, FALSE, FALSE, objectName(L"_event").text);
  const HANDLE quit = CreateEventW(NULL, FALSE, FALSE, objectName(L"_quit").text);
  const HANDLE mapping = CreateFileMappingW(INVALID_HANDLE_VALUE, NULL, PAGE_READWRITE, 0,
                                            sizeof(LauncherStruct), objectName(L"_sm").text);
  const LauncherStruct* const record =
      mapping != NULL ? MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, sizeof *record) : NULL;
  if (message == NULL || quit == NULL || record == NULL) {
    return EXIT_FAILURE;
  }
  const HANDLE mutex = CreateMutexW(NULL, FALSE, objectName(L"_mutex").text);
  if (mutex == NULL) {
    return EXIT_FAILURE;
  }
  if (GetLastError() == ERROR_ALREADY_EXISTS) {
    return EXIT_SUCCESS;
  }
  return serveUntilQuit(record, message, quit, mutex);
}

int wmain(int argc, wchar_t** argv) {
  if (argc == 2 && wcscmp(argv[1], L"--quit") == 0) {
    while (setEvent(L"_quit")) {
      Sleep(lookAgain); /* the event goes with the launcher */
    }
    return EXIT_SUCCESS;
  }
  return serve();
}
