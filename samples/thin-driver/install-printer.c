/*
 * install-printer FOLDER
 *
 * Installs the printer "Tarnwick Quillpress" and a driver of that name, which consists of the files
 * in the folder: tqpumpd2k.dll, its launcher tqpmsnd.exe, the program quillpress.exe that the
 * launcher converts with, and tqpconf.ini with the settings that every user's printer gets. May be
 * run again when they have changed.
 *
 * No page is rendered here and no dialog shown, so two of the files are named where a product names
 * its own for that. Exit status 0: installed; 1: not; 2: wrong usage.
 */
#include <stdbool.h>
#include <stdio.h>
#include <windows.h>
/* The headers below build on <windows.h>. */
#include <strsafe.h>
#include <winspool.h>

#include "samples/thin-driver/failure.h"

static wchar_t printerName[] = L"Tarnwick Quillpress";

static bool findFile(wchar_t path[MAX_PATH], const wchar_t* folder, const wchar_t* name) {
  if (FAILED(StringCchPrintfW(path, MAX_PATH, L"%ls\\%ls", folder, name))) {
    return fail(L"install a driver from", folder, L"move it to a shorter path");
  }
  return GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES ||
         failWithReason(L"find the driver's file", path, L"put it there");
}

/* The spooler copies all files of a driver into one directory, where the library looks for its
   launcher and its settings. */
static bool installDriver(const wchar_t* folder) {
  wchar_t library[MAX_PATH];
  wchar_t settings[MAX_PATH];
  wchar_t launcher[MAX_PATH];
  wchar_t converter[MAX_PATH];
  wchar_t programs[2 * MAX_PATH + 1] = L"";
  if (!findFile(library, folder, L"tqpumpd2k.dll") || !findFile(settings, folder, L"tqpconf.ini") ||
      !findFile(launcher, folder, L"tqpmsnd.exe") ||
      !findFile(converter, folder, L"quillpress.exe")) {
    return false;
  }
  /* A list of paths, each with its terminator, which an empty path ends. */
  wchar_t* end = programs;
  size_t room = ARRAYSIZE(programs);
  StringCchCopyExW(end, room, launcher, &end, &room, 0);
  StringCchCopyW(end + 1, room - 1, converter);

  DRIVER_INFO_3W driver = {.cVersion = 3,
                           .pName = printerName,
                           .pDriverPath = library,
                           .pDataFile = settings,
                           .pConfigFile = settings,
                           .pDependentFiles = programs};
  return AddPrinterDriverExW(NULL, 3, (BYTE*)&driver,
                             APD_COPY_ALL_FILES | APD_COPY_FROM_DIRECTORY) ||
         failWithReason(L"install the driver", printerName,
                        L"see that no launcher runs, and that you may install printers");
}

/* Nothing of a job reaches the port: its file takes its place. */
static bool installPrinter(void) {
  wchar_t port[] = L"NUL:";
  wchar_t processor[] = L"winprint";
  wchar_t datatype[] = L"RAW";
  PRINTER_INFO_2W printer = {.pPrinterName = printerName,
                             .pPortName = port,
                             .pDriverName = printerName,
                             .pPrintProcessor = processor,
                             .pDatatype = datatype};
  const HANDLE handle = AddPrinterW(NULL, 2, (BYTE*)&printer);
  if (handle != NULL) {
    return ClosePrinter(handle);
  }
  return GetLastError() == ERROR_PRINTER_ALREADY_EXISTS ||
         failWithReason(L"install the printer", printerName, L"see that its driver is installed");
}

int wmain(int argc, wchar_t** argv) {
  wchar_t folder[MAX_PATH];
  speakUnicode();
  if (argc != 2) {
    fwprintf(stderr, L"usage: install-printer FOLDER\n");
    return 2;
  }
  const DWORD length = GetFullPathNameW(argv[1], MAX_PATH, folder, NULL);
  if (length == 0 || length >= MAX_PATH) {
    failWithReason(L"find", argv[1], L"give a shorter path of a folder that is there");
    return 1;
  }
  return installDriver(folder) && installPrinter() ? 0 : 1;
}
