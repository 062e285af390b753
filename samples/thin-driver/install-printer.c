/*
 * install-printer SAVE-DIRECTORY CONVERT-COMMAND
 *
 * Installs the printer "Tarnwick Quillpress" with a driver of that name, from the files beside this
 * program, and writes the installation's settings: where jobs are saved, and the command by which
 * the launcher has a job converted (%1 stands for the PostScript file, %2 for the PDF file).
 * May be run again, with other settings too.
 *
 * No page is rendered here, so tqpumpd2k.dll stands where a product names its rendering driver.
 * Exit status 0: installed; 1: not; 2: wrong usage.
 */
#include <stdbool.h>
#include <stdio.h>
#include <windows.h>
/* The headers below build on <windows.h>. */
#include <strsafe.h>
#include <winspool.h>

#include "samples/thin-driver/failure.h"

static wchar_t printerName[] = L"Tarnwick Quillpress";

/* The path of a file in the folder of this program. */
static bool besideProgram(wchar_t* path, DWORD size, const wchar_t* file) {
  const DWORD length = GetModuleFileNameW(NULL, path, size);
  wchar_t* const separator = wcsrchr(path, L'\\');
  if (length == 0 || length == size || separator == NULL) return false;
  const size_t room = size - (size_t)(separator + 1 - path);
  return SUCCEEDED(StringCchCopyW(separator + 1, room, file));
}

/* The spooler puts all files of a driver into one directory, where the library looks for its
   launcher. */
static bool installDriver(void) {
  wchar_t library[MAX_PATH];
  wchar_t launcher[MAX_PATH + 1] = L""; /* a list of files, which an empty name ends */
  if (!besideProgram(library, MAX_PATH, L"tqpumpd2k.dll") ||
      !besideProgram(launcher, MAX_PATH - 1, L"tqpmsnd.exe")) {
    return fail(L"find", L"the driver's files", L"move this program to a shorter path");
  }
  launcher[wcslen(launcher) + 1] = L'\0';
  DRIVER_INFO_3W driver = {.cVersion = 3,
                           .pName = printerName,
                           .pDriverPath = library,
                           .pDataFile = library,
                           .pConfigFile = library,
                           .pDependentFiles = launcher};
  if (AddPrinterDriverExW(NULL, 3, (BYTE*)&driver, APD_COPY_ALL_FILES | APD_COPY_FROM_DIRECTORY))
    return true;
  return failWithReason(L"install the driver", printerName,
                        L"see that no job is printing and that you may install printers");
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
  if (handle != NULL) return ClosePrinter(handle);
  return GetLastError() == ERROR_PRINTER_ALREADY_EXISTS ||
         failWithReason(L"install the printer", printerName, L"see that its driver is installed");
}

/* The file beside the driver from which every user's settings are made. */
static bool writeSettings(const wchar_t* saveDirectory, const wchar_t* command) {
  wchar_t path[MAX_PATH + 32];
  wchar_t text[4096];
  DWORD size = 0;
  if (!GetPrinterDriverDirectoryW(NULL, NULL, 1, (BYTE*)path, MAX_PATH * sizeof *path, &size))
    return failWithReason(L"find", L"the driver directory", L"see that the spooler runs");
  StringCchCatW(path, ARRAYSIZE(path), L"\\3\\tqpconf.ini");
  if (FAILED(StringCchPrintfW(text, ARRAYSIZE(text),
                              L"\xFEFF[init]\r\noverrideUserSettings=1\r\n"
                              L"DefaultSaveDir=%ls\r\nConvertCmdLine=%ls\r\n",
                              saveDirectory, command)))
    return fail(L"write", path, L"give a shorter directory and command");

  const HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL);
  const DWORD length = (DWORD)(wcslen(text) * sizeof *text);
  const bool written = file != INVALID_HANDLE_VALUE && WriteFile(file, text, length, &size, NULL);
  if (!written) failWithReason(L"write", path, L"see that you may write there");
  if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
  return written;
}

int wmain(int argc, wchar_t** argv) {
  speakUnicode();
  if (argc != 3) {
    fwprintf(stderr, L"usage: install-printer SAVE-DIRECTORY CONVERT-COMMAND\n");
    return 2;
  }
  return installDriver() && installPrinter() && writeSettings(argv[1], argv[2]) ? 0 : 1;
}
