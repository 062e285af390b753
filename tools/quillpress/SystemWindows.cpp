// The system as Windows has it, by the C library as far as that goes.
#include "tools/quillpress/System.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace quillpress {
namespace {

namespace fs = std::filesystem;

struct CloseFile {
  void operator()(FILE* file) const {
    if (file != stdin && file != stdout) {
      std::fclose(file);
    }
  }
};
using Stream = std::unique_ptr<FILE, CloseFile>;

void writeAll(FILE* file, std::string_view bytes, const std::string& path) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()) {
    failFile("cannot write", path, errno);
  }
}

}  // namespace

FileBytes::FileBytes(const std::string& path) {
  const std::string name = path == "-" ? "standard input" : path;
  const Stream file(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
  if (!file) {
    failFile("cannot read", name, fs::is_directory(path) ? EISDIR : errno);
  }
  _setmode(_fileno(file.get()), _O_BINARY);
  std::array<char, 65536> block;
  while (const size_t count = std::fread(block.data(), 1, block.size(), file.get())) {
    read_.append(block.data(), count);
  }
  if (std::ferror(file.get()) != 0) {
    failFile("cannot read", name, errno);
  }
  bytes_ = read_;
}

FileBytes::~FileBytes() = default;

struct OutputFile::State {
  std::string shownName;
  std::string place;
  std::string temporary;
  Stream file;
};

OutputFile::OutputFile(const std::string& path) : state_(std::make_unique<State>()) {
  state_->shownName = path == "-" ? "standard output" : path;
  std::error_code none;
  if (path == "-") {
    _setmode(_fileno(stdout), _O_BINARY);
    state_->file.reset(stdout);
  } else if (!fs::exists(path, none) || fs::is_regular_file(path, none)) {
    state_->temporary = path + "." + std::to_string(GetCurrentProcessId()) + ".quillpress";
    state_->file.reset(std::fopen(state_->temporary.c_str(), "wbx"));
    state_->place = state_->file ? path : "";
  } else {
    state_->file.reset(std::fopen(path.c_str(), "wb"));
  }
  if (!state_->file) {
    failFile("cannot write", state_->shownName, fs::is_directory(path, none) ? EISDIR : errno);
  }
}

OutputFile::~OutputFile() {
  if (!state_->place.empty()) {
    state_->file.reset();
    std::remove(state_->temporary.c_str());
  }
}

void OutputFile::write(std::string_view bytes) {
  writeAll(state_->file.get(), bytes, state_->shownName);
}

void OutputFile::commit() {
  const bool flushed = std::fflush(state_->file.get()) == 0;
  const int error = errno;
  state_->file.reset();
  if (!flushed) {
    failFile("cannot write", state_->shownName, error);
  }
  if (!state_->place.empty()) {
    std::error_code failure;
    fs::rename(state_->temporary, state_->place, failure);
    if (failure) {
      failFile("cannot write", state_->shownName, EACCES);
    }
    state_->place.clear();
  }
}

struct ScratchFile::State {
  Stream file;
};

ScratchFile::ScratchFile() : state_(std::make_unique<State>()) {
  std::array<char, MAX_PATH> folder{};
  std::array<char, MAX_PATH> name{};
  GetTempPathA(MAX_PATH, folder.data());
  if (GetTempFileNameA(folder.data(), "qlp", 0, name.data()) != 0) {
    // "D": the file goes when it is closed.
    state_->file.reset(std::fopen(name.data(), "w+bD"));
  }
  if (!state_->file) {
    failFile("cannot write", "a temporary file", errno);
  }
}

ScratchFile::~ScratchFile() = default;

uint64_t ScratchFile::append(std::string_view bytes) {
  _fseeki64(state_->file.get(), 0, SEEK_END);
  writeAll(state_->file.get(), bytes, "a temporary file");
  return std::exchange(length_, length_ + bytes.size());
}

void ScratchFile::read(uint64_t place, size_t length,
                       const std::function<void(std::string_view)>& take) {
  std::array<char, 65536> block;
  _fseeki64(state_->file.get(), static_cast<int64_t>(place), SEEK_SET);
  while (length > 0) {
    const size_t count =
        std::fread(block.data(), 1, std::min(length, block.size()), state_->file.get());
    if (count == 0) {
      failFile("cannot read", "a temporary file", EIO);
    }
    take({block.data(), count});
    length -= count;
  }
}

// A console's end takes the program as it is: what is written beside its place stays beside it.
void prepareSignals() {}

bool standardOutputIsTerminal() {
  return _isatty(_fileno(stdout)) != 0;
}

bool standardErrorIsTerminal() {
  return _isatty(_fileno(stderr)) != 0;
}

double threadSeconds() {
  FILETIME created, ended, kernel, user;
  GetThreadTimes(GetCurrentThread(), &created, &ended, &kernel, &user);
  const auto ticks = [](const FILETIME& time) {
    return static_cast<double>(static_cast<uint64_t>(time.dwHighDateTime) << 32 |
                               time.dwLowDateTime);
  };
  return (ticks(kernel) + ticks(user)) * 1e-7;
}

double wallSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

uint64_t memoryInUse() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage;
}

}  // namespace quillpress
