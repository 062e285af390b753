// Short calls of all kinds. Functions that older systems lack are called by an address that the
// front end has looked up, with the types that are written out at the top.
#include "umpd/platform/win32/Win32Types.h"
// The headers below build on <windows.h>.
#include <lm.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <ctime>

#include "umpd/platform/LowPages.h"
#include "umpd/platform/win32/Win32Platform.h"

namespace umpd {
namespace {

using NetGetDCNameCall = NET_API_STATUS(WINAPI*)(LPCWSTR, LPCWSTR, LPBYTE*);
using NetApiBufferFreeCall = NET_API_STATUS(WINAPI*)(LPVOID);

constexpr DWORD nameCapacity = 260;
// The system's text into a buffer of its own, in the user's language.
constexpr DWORD systemTextFlags = 0x1100;
constexpr DWORD userLanguage = 0x400;

struct LocalFreer {
  void operator()(void* memory) const { LocalFree(memory); }
};

// The parts are copied: what they lie in belongs to the caller.
Sid taken(PSID sid) {
  Sid result;
  result.valid = IsValidSid(sid) != FALSE;
  if (!result.valid) {
    return result;
  }
  const BYTE* authority = GetSidIdentifierAuthority(sid)->Value;
  std::copy_n(authority, result.authority.size(), result.authority.begin());
  const DWORD count = *GetSidSubAuthorityCount(sid);
  for (DWORD i = 0; i < count; ++i) {
    result.subAuthorities.push_back(*GetSidSubAuthority(sid, i));
  }
  return result;
}

}  // namespace

// Two passes, as with the spooler: the first only measures.
std::u16string widened(const char* narrow, size_t length) {
  const int size = static_cast<int>(length);
  const int needed = size ? MultiByteToWideChar(CP_ACP, 0, narrow, size, nullptr, 0) : 0;
  std::u16string result(static_cast<size_t>(needed), u'\0');
  if (needed) {
    MultiByteToWideChar(CP_ACP, 0, narrow, size, reinterpret_cast<wchar_t*>(result.data()), needed);
  }
  return result;
}

std::optional<std::u16string> widenedIfAny(const char* narrow) {
  if (!narrow) {
    return std::nullopt;
  }
  return widened(narrow, std::char_traits<char>::length(narrow));
}

// This call tells programs that do not name newer systems in their manifest that they run on an old
// one. The front end tests only for lines and for Vista, which is old enough.
std::optional<OsVersion> Win32Version::query() {
  OSVERSIONINFOA info{};
  static_assert(sizeof info == 148);
  info.dwOSVersionInfoSize = sizeof info;
  if (!GetVersionExA(&info)) {
    return std::nullopt;
  }
  return OsVersion{info.dwMajorVersion, info.dwMinorVersion, info.dwPlatformId};
}

// By its full path: a bare name would be looked for in the program's directory and in the current
// one too, where anybody may have put a library of that name.
OwnedModule Win32Modules::load(const std::u16string& name) {
  wchar_t directory[nameCapacity] = {};
  const UINT length = GetSystemDirectoryW(directory, nameCapacity);
  if (length == 0 || length >= nameCapacity) {
    return {};
  }
  const std::u16string path = text(directory, length) + u'\\' + name;
  return OwnedModule(*this, from<ModuleHandle>(LoadLibraryExW(wide(path), nullptr,
                                                              LOAD_WITH_ALTERED_SEARCH_PATH)));
}

FunctionAddress Win32Modules::find(ModuleHandle module, const char* function) {
  return from<FunctionAddress>(GetProcAddress(as<HMODULE>(module), function));
}

void Win32Modules::close(ModuleHandle module) {
  const KeptLastError kept;
  FreeLibrary(as<HMODULE>(module));
}

std::optional<std::u16string> Win32Accounts::userName() {
  wchar_t name[nameCapacity] = {};
  DWORD size = nameCapacity;
  if (!GetUserNameW(name, &size)) {
    return std::nullopt;
  }
  return text(name);
}

// Fails without buffers, and leaves the sizes.
AccountSizes Win32Accounts::accountSizes(const std::u16string& server, const std::u16string& user) {
  DWORD sidSize = 0;
  DWORD domainSize = 0;
  SID_NAME_USE use{};
  LookupAccountNameW(wide(server), wide(user), nullptr, &sidSize, nullptr, &domainSize, &use);
  return {sidSize, domainSize};
}

// The domain's name has to be taken too, and is not used.
std::optional<Sid> Win32Accounts::account(const std::u16string& server, const std::u16string& user,
                                          AccountSizes sizes) {
  std::vector<BYTE> sid(sizes.sid);
  std::vector<wchar_t> domain(sizes.domain);
  DWORD sidSize = sizes.sid;
  DWORD domainSize = sizes.domain;
  SID_NAME_USE use{};
  if (!LookupAccountNameW(wide(server), wide(user), sid.data(), &sidSize, domain.data(),
                          &domainSize, &use)) {
    return std::nullopt;
  }
  return taken(sid.data());
}

std::optional<std::u16string> Win32Accounts::domainController(FunctionAddress call,
                                                              FunctionAddress release) {
  BYTE* buffer = nullptr;
  if (as<NetGetDCNameCall>(call)(nullptr, nullptr, &buffer) != NERR_Success || !buffer) {
    return std::nullopt;
  }
  std::u16string name = text(reinterpret_cast<const wchar_t*>(buffer));
  as<NetApiBufferFreeCall>(release)(buffer);
  return name;
}

uint32_t Win32Clock::tickCount() {
  return GetTickCount();
}

void Win32Clock::sleep(uint32_t milliseconds) {
  Sleep(milliseconds);
}

int64_t Win32Clock::now() {
  return _time64(nullptr);
}

std::optional<CalendarTime> Win32Clock::localTime(int64_t time) {
  std::tm local{};
  const __time64_t moment = time;
  if (_localtime64_s(&local, &moment) != 0) {
    return std::nullopt;
  }
  return CalendarTime{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                      local.tm_hour,        local.tm_min,     local.tm_sec};
}

int32_t Win32Clock::timeZoneBias() {
  TIME_ZONE_INFORMATION zone{};
  GetTimeZoneInformation(&zone);
  return zone.Bias;
}

// The state is the calling thread's.
void Win32Random::seed(uint32_t value) {
  std::srand(value);
}

uint32_t Win32Random::next() {
  static_assert(RAND_MAX == 32767);
  return static_cast<uint32_t>(std::rand());
}

void Win32Messages::box(const std::u16string& text, const std::u16string& caption, uint32_t flags) {
  MessageBoxW(nullptr, wide(text), wide(caption), flags);
}

void Win32Messages::narrowBox(const std::string& text, const std::string& caption, uint32_t flags) {
  MessageBoxA(nullptr, text.c_str(), caption.c_str(), flags);
}

void Win32Messages::debug(const std::u16string& text) {
  OutputDebugStringW(wide(text));
}

void Win32Messages::narrowDebug(const std::string& text) {
  OutputDebugStringA(text.c_str());
}

uint32_t Win32Messages::lastError() {
  return GetLastError();
}

void Win32Messages::setLastError(uint32_t error) {
  SetLastError(error);
}

std::optional<std::u16string> Win32Messages::errorText(uint32_t error) {
  const KeptLastError kept;
  wchar_t* buffer = nullptr;
  const DWORD length = FormatMessageW(systemTextFlags, nullptr, error, userLanguage,
                                      reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
  const std::unique_ptr<wchar_t, LocalFreer> owned(buffer);
  if (length == 0) {
    return std::nullopt;
  }
  return text(buffer, length);
}

std::u16string Win32Text::widen(const std::string& text) {
  return widened(text.data(), text.size());
}

// Characters that the code page lacks become its default character.
std::string Win32Text::narrow(const std::u16string& text) {
  const int size = static_cast<int>(text.size());
  const int needed =
      size ? WideCharToMultiByte(CP_ACP, 0, wide(text), size, nullptr, 0, nullptr, nullptr) : 0;
  std::string result(static_cast<size_t>(needed), '\0');
  if (needed) {
    WideCharToMultiByte(CP_ACP, 0, wide(text), size, result.data(), needed, nullptr, nullptr);
  }
  return result;
}

bool Win32Text::toUtf8(const std::u16string& text, std::span<char> buffer) {
  // A size of 0 would ask for the size.
  if (buffer.empty()) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return false;
  }
  return WideCharToMultiByte(CP_UTF8, 0, wide(text), static_cast<int>(text.size() + 1),
                             buffer.data(), static_cast<int>(buffer.size()), nullptr, nullptr) != 0;
}

OwnedLowBlock Win32Memory::allocate(size_t size) {
  return OwnedLowBlock(*this, allocateLowPages(size));
}

void Win32Memory::close(std::byte* block) {
  const KeptLastError kept;
  // The system knows the size.
  freeLowPages(block, 0);
}

}  // namespace umpd
