#include "tools/quillpress/system/System.h"

#include <windows.h>
// The header below builds on <windows.h>.
#include <shellapi.h>

#include <fcntl.h>
#include <io.h>
#include <psapi.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace quillpress {
namespace {

std::string utf8Of(const wchar_t* wide) {
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
  text.pop_back();  // the terminator
  return text;
}

// Windows says of a folder that access to it is denied, which helps nobody.
int withReason(int descriptor, const std::filesystem::path& path) {
  std::error_code none;
  if (descriptor < 0 && errno == EACCES && std::filesystem::is_directory(path, none)) {
    errno = EISDIR;
  }
  return descriptor;
}

}  // namespace

std::vector<std::string> systemArguments(int argc, char** argv) {
  int count = 0;
  wchar_t** const wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (wide == nullptr) {
    return {argv, argv + argc};
  }
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) {
    arguments.push_back(utf8Of(wide[i]));
  }
  ::LocalFree(wide);
  return arguments;
}

void makeStandardStreamsBinary() {
  ::_setmode(_fileno(stdin), _O_BINARY);
  ::_setmode(_fileno(stdout), _O_BINARY);
  ::SetConsoleOutputCP(CP_UTF8);
}

void prepareSignals() {}

void setUnfinishedFile(const std::filesystem::path&) {}

std::filesystem::path systemPath(const std::string& utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

int openToRead(const std::filesystem::path& path) {
  return withReason(::_wopen(path.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT), path);
}

int openToWrite(const std::filesystem::path& path) {
  return withReason(::_wopen(path.c_str(), _O_WRONLY | _O_BINARY | _O_NOINHERIT), path);
}

// Numbers until one is free: two programs that run at the same time have different process numbers.
int createBeside(const std::filesystem::path& place, std::filesystem::path& made) {
  const std::wstring stem = L".quillpress-" + std::to_wstring(::GetCurrentProcessId()) + L"-";
  for (int number = 1;; ++number) {
    made = place.parent_path() / (stem + std::to_wstring(number));
    const int descriptor =
        ::_wopen(made.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                 _S_IREAD | _S_IWRITE);
    if (descriptor >= 0 || errno != EEXIST) {
      return descriptor;
    }
  }
}

int createScratch() {
  std::array<wchar_t, MAX_PATH + 1> folder{};
  std::array<wchar_t, MAX_PATH + 1> name{};
  if (::GetTempPathW(MAX_PATH, folder.data()) == 0 ||
      ::GetTempFileNameW(folder.data(), L"qlp", 0, name.data()) == 0) {
    errno = EACCES;
    return -1;
  }
  return ::_wopen(name.data(),
                  _O_RDWR | _O_CREAT | _O_TEMPORARY | _O_BINARY | _O_NOINHERIT | _O_RANDOM,
                  _S_IREAD | _S_IWRITE);
}

// A new file has those of its folder.
bool setPermissions(int, const std::filesystem::path&) {
  return true;
}

bool seekTo(int descriptor, uint64_t place) {
  return ::_lseeki64(descriptor, static_cast<int64_t>(place), SEEK_SET) >= 0;
}

// Files are read: one that is mapped could not be replaced.
const void* mapFile(int, size_t&) {
  return nullptr;
}

void unmapFile(const void*, size_t) {}

bool isDiskFull(int error) {
  return error == ENOSPC || error == EFBIG;
}

double threadSeconds() {
  FILETIME created, ended, kernel, user;
  ::GetThreadTimes(::GetCurrentThread(), &created, &ended, &kernel, &user);
  const auto ticks = [](const FILETIME& time) {
    return static_cast<double>(static_cast<uint64_t>(time.dwHighDateTime) << 32 |
                               time.dwLowDateTime);
  };
  return (ticks(kernel) + ticks(user)) * 1e-7;
}

uint64_t memoryInUse() {
  PROCESS_MEMORY_COUNTERS counters{};
  ::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage;
}

void limitMemory(uint64_t bytes) {
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_PROCESS_MEMORY;
  limits.ProcessMemoryLimit = static_cast<SIZE_T>(bytes);
  // The job lives as long as the program.
  const HANDLE job = ::CreateJobObjectW(nullptr, nullptr);
  ::SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
  ::AssignProcessToJobObject(job, ::GetCurrentProcess());
}

}  // namespace quillpress
