#include "tests/windows/Receiver.h"

#include <lmcons.h>

Receiver::Receiver() = default;

Receiver::~Receiver() {
  UnmapViewOfFile(record);
  for (const HANDLE handle : {mapping, event, mutex}) CloseHandle(handle);
}

std::wstring Receiver::name(const wchar_t* ending) {
  wchar_t user[UNLEN + 1] = {};
  DWORD size = UNLEN + 1;
  GetUserNameW(user, &size);
  return std::wstring(L"Local\\tqpsend_") + user + ending;
}

std::optional<std::string> Receiver::receive(DWORD milliseconds, HANDLE other) {
  const HANDLE awaited[] = {event, other};
  if (WaitForMultipleObjects(2, awaited, FALSE, milliseconds) != WAIT_OBJECT_0) return {};
  std::string message = std::string(record->command) + "|" + record->printerName;
  if (record->outputFile[0])
    message += std::string("|") + record->outputFile + "|" + record->docName;
  return message;
}

void Receiver::answer() {
  const HANDLE end = OpenEventW(EVENT_MODIFY_STATE, FALSE, name(L"_end").c_str());
  SetEvent(end);
  CloseHandle(end);
}
