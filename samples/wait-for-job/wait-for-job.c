/*
 * wait-for-job PRINTER [SECONDS]
 *
 * Waits until the next job of a printer is finished, and prints the document's name and the file's
 * path, a line each. Meanwhile the library starts no launcher for this printer: it writes the file,
 * leaves the two texts in the printer's settings, and signals an event of this program's making.
 * Exit status 0: a job came; 1: none, within the time or at all; 2: wrong usage.
 */
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <windows.h>
/* The header below builds on <windows.h>. */
#include <strsafe.h>

#include "samples/thin-driver/failure.h"

enum { nameSize = 260, textSize = 1024 };

static const wchar_t mode[] = L"FinishPrintEv";

/* The printer's settings are in a key that is named as the printer, with commas for backslashes.
   The library makes the key, with what else belongs in it, when the printer is first used. */
static bool openSettings(const wchar_t* printer, HKEY* key) {
  wchar_t path[nameSize + 32];
  if (FAILED(StringCchPrintfW(path, ARRAYSIZE(path), L"Software\\Quillpress\\%ls", printer))) {
    return fail(L"find the settings of", printer, L"give a shorter name");
  }
  for (wchar_t* at = path + wcslen(L"Software\\Quillpress\\"); *at != L'\0'; ++at) {
    if (*at == L'\\') {
      *at = L',';
    }
  }
  return RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ | KEY_WRITE, key) == ERROR_SUCCESS ||
         fail(L"find the settings of", printer, L"check its name, and print to it once before");
}

static bool switchMode(HKEY key, DWORD isOn) {
  return RegSetValueExW(key, mode, 0, REG_DWORD, (const BYTE*)&isOn, sizeof isOn) ==
             ERROR_SUCCESS ||
         fail(L"write", L"the printer's settings", L"see whether you may change the registry");
}

static void show(HKEY key, const wchar_t* value) {
  wchar_t text[textSize] = L"";
  DWORD size = sizeof text;
  RegGetValueW(key, NULL, value, RRF_RT_REG_SZ, NULL, text, &size);
  wprintf(L"%ls\n", text);
}

static bool waitForJob(HKEY key, DWORD milliseconds) {
  /* It resets itself when the wait ends, as the library does not reset it. */
  const HANDLE event = CreateEventW(NULL, FALSE, FALSE, L"Local\\FinishPrintEv");
  if (event == NULL) {
    return failWithReason(L"make the event", mode, L"see whether another program has the name");
  }
  bool came = false;
  if (switchMode(key, 1)) {
    came = WaitForSingleObject(event, milliseconds) == WAIT_OBJECT_0;
    switchMode(key, 0);
  }
  CloseHandle(event);
  return came;
}

int wmain(int argc, wchar_t** argv) {
  speakUnicode();
  if (argc < 2 || argc > 3) {
    fwprintf(stderr, L"usage: wait-for-job PRINTER [SECONDS]\n");
    return 2;
  }
  const DWORD milliseconds = argc == 3 ? wcstoul(argv[2], NULL, 10) * 1000 : INFINITE;
  HKEY key = NULL;
  if (!openSettings(argv[1], &key)) {
    return EXIT_FAILURE;
  }
  const bool came = waitForJob(key, milliseconds);
  if (came) {
    show(key, L"DocName");
    show(key, L"lastfile");
  }
  RegCloseKey(key);
  return came ? EXIT_SUCCESS : EXIT_FAILURE;
}
