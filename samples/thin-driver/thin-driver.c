/*
 * thin-driver PRINTER FILE
 *
 * The part of a printer driver that works with tqpumpd2k.dll, as a program. A real driver gets the
 * spooler's handle and the job's number from the system, and its bytes from the page that it
 * renders; this one opens the printer, starts a job of the spooler, and takes the bytes of a file.
 *
 * Each function has one thing to open and to close. Exit status 0: printed; 1: not; 2: wrong usage.
 */
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <windows.h>
/* The headers below build on <windows.h>. */
#include <strsafe.h>
#include <winspool.h>

#include "include/tqpumpd2k.h"
#include "samples/thin-driver/failure.h"

static void showWhereItGoes(uint32_t job, DWORD jobId, const wchar_t* document) {
  wchar_t directory[MAX_PATH] = L"";
  getStringVal((const void*)(uintptr_t)job, L"DefaultSaveDir", directory, ARRAYSIZE(directory),
               L"");
  wprintf(L"Job %lu, \"%ls\", is saved in %ls\n", jobId, document, directory);
}

static bool writeBuffers(uint32_t job, HANDLE file) {
  BYTE buffer[16384];
  DWORD length = 0;
  while (ReadFile(file, buffer, sizeof buffer, &length, NULL)) {
    if (length == 0) {
      return true;
    }
    if (DocWrite(job, buffer, length) == 0) {
      return fail(L"write", L"the job's file",
                  L"see the message box that told why, and the printer's save directory");
    }
  }
  return failWithReason(L"read", L"the file", L"see whether its disk is still there");
}

/* The library's part of a job: start, write, end. */
static bool runJob(HANDLE printer, DWORD jobId, wchar_t* document, HANDLE file) {
  const uint32_t job = DocStart2K(printer, jobId, NULL, document);
  if (job == 0) {
    return fail(L"start", document, L"see the message box that told why");
  }
  showWhereItGoes(job, jobId, document);
  bool done = writeBuffers(job, file);
  /* The library drops the file of a paused job, and takes the job out of the queue. */
  if (!done) {
    SetJobW(printer, jobId, 0, NULL, JOB_CONTROL_PAUSE);
  }
  if (DocEnd(job) == 0) {
    done = fail(L"end", document, L"see the message box that told why");
  }
  return done;
}

static bool printOn(HANDLE printer, wchar_t* document, HANDLE file) {
  wchar_t datatype[] = L"RAW";
  DOC_INFO_1W info = {.pDocName = document, .pDatatype = datatype};
  const DWORD jobId = StartDocPrinterW(printer, 1, (BYTE*)&info);
  if (jobId == 0) {
    return failWithReason(L"start a spooler job for", document, L"see the printer's queue");
  }
  const bool printed = runJob(printer, jobId, document, file);
  /* Its result says nothing: the library has taken the job out of the queue by now. */
  EndDocPrinter(printer);
  return printed;
}

static bool printWith(wchar_t* printerName, wchar_t* document, HANDLE file) {
  HANDLE printer = NULL;
  if (!OpenPrinterW(printerName, &printer, NULL)) {
    return failWithReason(L"open the printer", printerName,
                          L"install it with install-printer, or name another");
  }
  const bool printed = printOn(printer, document, file);
  ClosePrinter(printer);
  return printed;
}

/* A title as applications make them, which the library will name the file after. */
static void entitle(wchar_t* title, size_t size, const wchar_t* path) {
  const wchar_t* name = path;
  for (const wchar_t* at = path; *at != L'\0'; ++at) {
    if (*at == L'\\' || *at == L'/') {
      name = at + 1;
    }
  }
  StringCchPrintfW(title, size, L"Thin driver - %ls", name);
}

static bool printFile(wchar_t* printerName, const wchar_t* path) {
  wchar_t document[MAX_PATH];
  entitle(document, ARRAYSIZE(document), path);
  const HANDLE file =
      CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, NULL, OPEN_EXISTING, 0, NULL);
  if (file == INVALID_HANDLE_VALUE) {
    return failWithReason(L"open", path, L"give a file that is there and that you may read");
  }
  const bool printed = printWith(printerName, document, file);
  CloseHandle(file);
  return printed;
}

int wmain(int argc, wchar_t** argv) {
  speakUnicode();
  if (argc != 3) {
    fwprintf(stderr, L"usage: thin-driver PRINTER FILE\n");
    return 2;
  }
  return printFile(argv[1], argv[2]) ? 0 : 1;
}
