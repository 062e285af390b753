// Registry calls return their error instead of leaving it as the last one. Predefined keys are
// numbers that every process knows; they are used as they are and never closed.
#include <cstddef>
#include <cstdint>

#include "umpd/platform/win32/Win32Types.h"
// The headers below build on <windows.h>.
#include "umpd/platform/win32/Win32Platform.h"

namespace umpd {
namespace {

using RegOpenCurrentUserCall = LSTATUS(WINAPI*)(REGSAM, PHKEY);

HKEY hkey(KeyHandle key) {
  return as<HKEY>(key);
}

bool isPredefined(KeyHandle key) {
  return key == keyCurrentUser || key == keyLocalMachine || key == keyUsers;
}

// Everything but success and absence is a failure: too little room among them.
RegistryAnswer answerOf(LSTATUS status) {
  switch (status) {
    case ERROR_SUCCESS:
      return RegistryAnswer::ok;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_NO_MORE_ITEMS:
      return RegistryAnswer::absent;
    default:
      return RegistryAnswer::failed;
  }
}

}  // namespace

// Not volatile: settings outlive the session.
CreatedKey Win32Registry::createKey(KeyHandle parent, const std::u16string& subkey,
                                    uint32_t access) {
  HKEY key = nullptr;
  DWORD disposition = 0;
  if (RegCreateKeyExW(hkey(parent), wide(subkey), 0, nullptr, REG_OPTION_NON_VOLATILE, access,
                      nullptr, &key, &disposition) != ERROR_SUCCESS) {
    return {};
  }
  return {OwnedKey(*this, from<KeyHandle>(key)), disposition == REG_CREATED_NEW_KEY};
}

OwnedKey Win32Registry::openKey(KeyHandle parent, const std::u16string& subkey, uint32_t access) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(hkey(parent), wide(subkey), 0, access, &key) != ERROR_SUCCESS) {
    return {};
  }
  return OwnedKey(*this, from<KeyHandle>(key));
}

OwnedKey Win32Registry::openCurrentUser(FunctionAddress call, uint32_t access) {
  HKEY key = nullptr;
  if (as<RegOpenCurrentUserCall>(call)(access, &key) != ERROR_SUCCESS) {
    return {};
  }
  return OwnedKey(*this, from<KeyHandle>(key));
}

RegistryValue Win32Registry::readValue(KeyHandle key, const std::u16string& name, size_t room) {
  RegistryValue value;
  // Without a buffer the call would only report the size.
  value.data.resize(room ? room : 1);
  DWORD type = 0;
  DWORD size = static_cast<DWORD>(room);
  value.answer = answerOf(RegQueryValueExW(hkey(key), wide(name), nullptr, &type,
                                           reinterpret_cast<BYTE*>(value.data.data()), &size));
  value.data.resize(value.ok() ? size : 0);
  value.name = name;
  value.type = type;
  return value;
}

// Without a buffer the call looks for the name only.
bool Win32Registry::hasValue(KeyHandle key, const std::u16string& name) {
  return RegQueryValueExW(hkey(key), wide(name), nullptr, nullptr, nullptr, nullptr) ==
         ERROR_SUCCESS;
}

bool Win32Registry::writeValue(KeyHandle key, const std::u16string& name, uint32_t type,
                               std::span<const std::byte> data) {
  return RegSetValueExW(hkey(key), wide(name), 0, type, reinterpret_cast<const BYTE*>(data.data()),
                        static_cast<DWORD>(data.size())) == ERROR_SUCCESS;
}

std::optional<KeyInfo> Win32Registry::queryInfo(KeyHandle key) {
  DWORD values = 0;
  DWORD longestName = 0;
  DWORD longestData = 0;
  if (RegQueryInfoKeyW(hkey(key), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values,
                       &longestName, &longestData, nullptr, nullptr) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return KeyInfo{values, longestName, longestData};
}

// On success the call leaves the name's length without its terminator.
RegistryValue Win32Registry::enumerateValue(KeyHandle key, uint32_t index, size_t nameRoom,
                                            size_t dataRoom) {
  RegistryValue value;
  std::vector<wchar_t> name(nameRoom ? nameRoom : 1);
  value.data.resize(dataRoom ? dataRoom : 1);
  DWORD nameLength = static_cast<DWORD>(nameRoom);
  DWORD type = 0;
  DWORD size = static_cast<DWORD>(dataRoom);
  value.answer = answerOf(RegEnumValueW(hkey(key), index, name.data(), &nameLength, nullptr, &type,
                                        reinterpret_cast<BYTE*>(value.data.data()), &size));
  value.data.resize(value.ok() ? size : 0);
  if (value.ok()) {
    value.name = text(name.data(), nameLength);
  }
  value.type = type;
  return value;
}

void Win32Registry::close(KeyHandle key) {
  const KeptLastError kept;
  if (!isPredefined(key)) {
    RegCloseKey(hkey(key));
  }
}

// The call reads leading digits, and returns the default only if there is no such entry.
uint32_t Win32Profiles::readInt(const std::u16string& path, const std::u16string& section,
                                const std::u16string& key, uint32_t defaultValue) {
  return GetPrivateProfileIntW(wide(section), wide(key), static_cast<INT>(defaultValue),
                               wide(path));
}

// The length does not count the terminator of the whole, but that of each text.
std::u16string Win32Profiles::readSection(const std::u16string& path, const std::u16string& section,
                                          size_t room) {
  std::vector<wchar_t> buffer(room);
  const DWORD length =
      GetPrivateProfileSectionW(wide(section), buffer.data(), static_cast<DWORD>(room), wide(path));
  return text(buffer.data(), length);
}

}  // namespace umpd
