// Files are opened by the calls themselves and not through the C library, whose modes have no word
// for sharing; the one text file is read through it, for its line ends.
#include "umpd/platform/win32/Win32Types.h"
// The headers below build on <windows.h>.
#include <shlobj.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "umpd/platform/win32/Win32Platform.h"

namespace umpd {
namespace {

using IsProtectedModeProcessCall = HRESULT(WINAPI*)(BOOL*);

constexpr DWORD pathCapacity = 260;

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// An item list is the shell's memory, and goes back to the shell's allocator.
struct ItemListFreer {
  void operator()(ITEMIDLIST* list) const {
    IMalloc* allocator = nullptr;
    if (SHGetMalloc(&allocator) != S_OK) {
      return;
    }
    allocator->Free(list);
    allocator->Release();
  }
};

HANDLE handleOf(FileHandle file) {
  return as<HANDLE>(file);
}

}  // namespace

FileHandle Win32Files::openForWriting(const std::u16string& path, Disposition disposition) {
  return from<FileHandle>(CreateFileW(wide(path), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      static_cast<DWORD>(disposition), FILE_ATTRIBUTE_NORMAL,
                                      nullptr));
}

bool Win32Files::write(FileHandle file, std::span<const std::byte> data, uint32_t& written) {
  DWORD count = 0;
  const BOOL succeeded =
      WriteFile(handleOf(file), data.data(), static_cast<DWORD>(data.size()), &count, nullptr);
  written = count;
  return succeeded != FALSE;
}

// A position may be the number that means failure: the last error tells them apart.
bool Win32Files::seekToEnd(FileHandle file) {
  SetLastError(ERROR_SUCCESS);
  return SetFilePointer(handleOf(file), 0, nullptr, FILE_END) != INVALID_SET_FILE_POINTER ||
         GetLastError() == ERROR_SUCCESS;
}

void Win32Files::close(FileHandle file) {
  const KeptLastError kept;
  CloseHandle(handleOf(file));
}

bool Win32Files::remove(const std::u16string& path) {
  return DeleteFileW(wide(path)) != FALSE;
}

std::optional<uint32_t> Win32Files::attributes(const std::u16string& path) {
  const DWORD attributes = GetFileAttributesW(wide(path));
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return std::nullopt;
  }
  return attributes;
}

bool Win32Files::makeDirectory(const std::u16string& path) {
  return CreateDirectoryW(wide(path), nullptr) != FALSE;
}

// The library's limit counts the terminator.
std::optional<std::string> Win32Files::readLine(const std::u16string& path, size_t limit) {
  // In text mode, where a line ends in one character.
  const std::unique_ptr<std::FILE, FileCloser> file(_wfopen(wide(path), L"r"));
  if (!file) {
    return std::nullopt;
  }
  std::string line(limit + 1, '\0');
  if (!std::fgets(line.data(), static_cast<int>(line.size()), file.get())) {
    return std::string();
  }
  line.resize(std::strlen(line.c_str()));
  return line;
}

// The oldest of the shell's calls for folders: all systems that the front end knows have it.
std::optional<std::u16string> Win32Files::specialFolder(SpecialFolder folder) {
  ITEMIDLIST* found = nullptr;
  if (SHGetSpecialFolderLocation(nullptr, static_cast<int>(folder), &found) != S_OK) {
    return std::nullopt;
  }
  const std::unique_ptr<ITEMIDLIST, ItemListFreer> list(found);
  wchar_t path[pathCapacity] = {};
  if (!SHGetPathFromIDListW(list.get(), path)) {
    return std::nullopt;
  }
  return text(path);
}

std::optional<std::u16string> Win32Files::systemDirectory() {
  wchar_t path[pathCapacity] = {};
  const UINT length = GetSystemDirectoryW(path, pathCapacity);
  if (length == 0 || length >= pathCapacity) {
    return std::nullopt;
  }
  return text(path, length);
}

// Nothing is inherited. The thread's handle is of no use to anybody.
OwnedObject Win32Processes::create(const ProcessRequest& request) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  if (request.showState) {
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = *request.showState;
  }
  // The call writes into its command line.
  std::u16string commandLine = request.commandLine;
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(nullptr, reinterpret_cast<wchar_t*>(commandLine.data()), nullptr, nullptr,
                      FALSE, request.creationFlags, nullptr,
                      request.directory.empty() ? nullptr : wide(request.directory), &startup,
                      &started)) {
    return {};
  }
  CloseHandle(started.hThread);
  return OwnedObject(objects_, from<ObjectHandle>(started.hProcess));
}

std::optional<uint32_t> Win32Processes::exitCode(ObjectHandle process) {
  DWORD code = 0;
  if (!GetExitCodeProcess(as<HANDLE>(process), &code)) {
    return std::nullopt;
  }
  return code;
}

uint32_t Win32Processes::currentThreadId() {
  return GetCurrentThreadId();
}

// The result of the call itself does not matter, as its answer stays false on failure.
bool Win32Processes::isProtectedMode(FunctionAddress call) {
  BOOL answer = FALSE;
  as<IsProtectedModeProcessCall>(call)(&answer);
  return answer == 1;
}

}  // namespace umpd
