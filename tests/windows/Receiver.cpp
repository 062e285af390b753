#include "tests/windows/Receiver.h"

#include <lmcons.h>

namespace umpd {

Receiver::Receiver() = default;

Receiver::~Receiver() {
  UnmapViewOfFile(record_);
  for (const HANDLE handle : {mapping_, event_, mutex_}) {
    CloseHandle(handle);
  }
}

std::wstring Receiver::name(const wchar_t* ending) {
  wchar_t user[UNLEN + 1] = {};
  DWORD size = UNLEN + 1;
  GetUserNameW(user, &size);
  return std::wstring(L"Local\\tqpsend_") + user + ending;
}

std::optional<std::string> Receiver::receive(DWORD milliseconds, HANDLE other) {
  const HANDLE awaited[] = {event_, other};
  if (WaitForMultipleObjects(2, awaited, FALSE, milliseconds) != WAIT_OBJECT_0) {
    return {};
  }
  std::string message = std::string(record_->command) + "|" + record_->printerName;
  if (record_->outputFile[0]) {
    message += std::string("|") + record_->outputFile + "|" + record_->docName;
  }
  return message;
}

void Receiver::answer() {
  const HANDLE end = OpenEventW(EVENT_MODIFY_STATE, FALSE, name(L"_end").c_str());
  SetEvent(end);
  CloseHandle(end);
}

}  // namespace umpd
