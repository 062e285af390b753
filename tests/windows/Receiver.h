// Receiver: the launcher's side of the channel, as far as tests need one.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "umpd/LauncherStruct.h"

namespace umpd {

class Receiver {
 public:
  Receiver();
  Receiver(const Receiver&) = delete;
  Receiver& operator=(const Receiver&) = delete;
  ~Receiver();

  // A message as "command|printer", with "|file|document" behind when it names a file. Nothing if
  // none came in time, or `other` did.
  std::optional<std::string> receive(DWORD milliseconds, HANDLE other);
  void answer();

 private:
  static std::wstring name(const wchar_t* ending);

  HANDLE mutex_ = CreateMutexW(nullptr, FALSE, name(L"_mutex").c_str());
  HANDLE event_ = CreateEventW(nullptr, FALSE, FALSE, name(L"_event").c_str());
  HANDLE mapping_ = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                       sizeof(LauncherStruct), name(L"_sm").c_str());
  LauncherStruct* record_ =
      static_cast<LauncherStruct*>(MapViewOfFile(mapping_, FILE_MAP_ALL_ACCESS, 0, 0, 0));
};

}  // namespace umpd
