#include "samples/thin-driver/failure.h"

#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <windows.h>

void speakUnicode(void) {
  _setmode(_fileno(stdout), _O_U8TEXT);
  _setmode(_fileno(stderr), _O_U8TEXT);
}

bool fail(const wchar_t* action, const wchar_t* object, const wchar_t* advice) {
  fwprintf(stderr, L"Cannot %ls %ls; %ls.\n", action, object, advice);
  return false;
}

bool failWithReason(const wchar_t* action, const wchar_t* object, const wchar_t* advice) {
  const DWORD error = GetLastError();
  wchar_t reason[512] = L"";
  FormatMessageW(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
      NULL, error, 0, reason, ARRAYSIZE(reason), NULL);
  fwprintf(stderr, L"Cannot %ls %ls: error %lu, %ls\n", action, object, error, reason);
  fwprintf(stderr, L"What to do: %ls.\n", advice);
  return false;
}
