#include "tools/quillpress/Files.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "tools/quillpress/system/System.h"

namespace quillpress {
namespace {

namespace fs = std::filesystem;

// A system's call may take no more than an int can count.
constexpr size_t longestTransfer = 1 << 24;

const char* adviceFor(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return "; check the path";
    case EACCES:
    case EPERM:
    case EROFS:
      return "; check the permissions or use another folder";
    case EISDIR:
      return "; give the name of a file";
    default:
      return isDiskFull(error) ? "; make room or use another disk" : "";
  }
}

[[noreturn]] void fail(const char* what, const std::string& path, int error) {
  throw FileFailure(std::string(what) + " " + path + ": " + std::generic_category().message(error) +
                    adviceFor(error));
}

void writeAll(const Descriptor& file, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const auto length = static_cast<unsigned>(std::min(bytes.size(), longestTransfer));
    const auto written = ::write(file.get(), bytes.data(), length);
    if (written < 0 && errno != EINTR) {
      fail("cannot write", path, errno);
    }
    bytes.remove_prefix(static_cast<size_t>(std::max<decltype(written)>(written, 0)));
  }
}

// What the descriptor gives next, at most that much; empty at its end.
std::string_view readSome(const Descriptor& file, std::array<char, 65536>& block, size_t most,
                          const std::string& name) {
  for (;;) {
    const auto length = static_cast<unsigned>(std::min(block.size(), most));
    const auto count = ::read(file.get(), block.data(), length);
    if (count >= 0) {
      return {block.data(), static_cast<size_t>(count)};
    }
    if (errno != EINTR) {
      fail("cannot read", name, errno);
    }
  }
}

}  // namespace

bool Descriptor::close() {
  const int closing = std::exchange(number_, -1);
  return closing <= STDERR_FILENO || ::close(closing) == 0;
}

FileBytes::FileBytes(const std::string& path) {
  const std::string name = path == "-" ? "standard input" : path;
  const Descriptor file(path == "-" ? STDIN_FILENO : openToRead(systemPath(path)));
  if (file.get() < 0) {
    fail("cannot read", name, errno);
  }
  size_t size = 0;
  mapped_ = path == "-" ? nullptr : mapFile(file.get(), size);
  if (mapped_ != nullptr) {
    bytes_ = {static_cast<const char*>(mapped_), size};
    return;
  }
  std::array<char, 65536> block;
  for (auto some = readSome(file, block, block.size(), name); !some.empty();
       some = readSome(file, block, block.size(), name)) {
    read_ += some;
  }
  bytes_ = read_;
}

FileBytes::~FileBytes() {
  if (mapped_ != nullptr) {
    unmapFile(mapped_, bytes_.size());
  }
}

OutputFile::OutputFile(const std::string& path)
    : shownName_(path == "-" ? "standard output" : path), file_(open(path)) {
  if (file_.get() < 0) {
    place_.clear();
    fail("cannot write", shownName_, errno);
  }
  setUnfinishedFile(beside_);
}

int OutputFile::open(const std::string& path) {
  if (path == "-") {
    return STDOUT_FILENO;
  }
  std::error_code none;
  const fs::path given = systemPath(path);
  const fs::file_status status = fs::status(given, none);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    return openToWrite(given);
  }
  // A link stays one: what it points to is replaced.
  const fs::path place = fs::canonical(given, none);
  place_ = place.empty() ? given : place;
  return createBeside(place_, beside_);
}

OutputFile::~OutputFile() {
  if (!place_.empty()) {
    file_.close();
    std::error_code none;
    fs::remove(beside_, none);
    setUnfinishedFile({});
  }
}

void OutputFile::write(std::string_view bytes) {
  writeAll(file_, bytes, shownName_);
}

void OutputFile::commit() {
  if ((!place_.empty() && !setPermissions(file_.get(), place_)) || !file_.close()) {
    fail("cannot write", shownName_, errno);
  }
  if (!place_.empty()) {
    std::error_code error;
    fs::rename(beside_, place_, error);
    if (error) {
      fail("cannot write", shownName_, error.default_error_condition().value());
    }
    setUnfinishedFile({});
    place_.clear();
  }
}

ScratchFile::ScratchFile() : file_(createScratch()) {
  if (file_.get() < 0) {
    fail("cannot write", "a temporary file", errno);
  }
}

uint64_t ScratchFile::append(std::string_view bytes) {
  writeAll(file_, bytes, "a temporary file");
  return std::exchange(length_, length_ + bytes.size());
}

void ScratchFile::read(uint64_t place, size_t length,
                       const std::function<void(std::string_view)>& take) {
  const std::string name = "a temporary file";
  if (!seekTo(file_.get(), place)) {
    fail("cannot read", name, errno);
  }
  std::array<char, 65536> block;
  while (length > 0) {
    const std::string_view some = readSome(file_, block, length, name);
    if (some.empty()) {
      fail("cannot read", name, EIO);
    }
    take(some);
    length -= some.size();
  }
}

bool isSameFile(const std::string& path, const std::string& other) {
  std::error_code none;
  return fs::is_regular_file(systemPath(path), none) &&
         fs::equivalent(systemPath(path), systemPath(other), none);
}

bool standardOutputIsTerminal() {
  return ::isatty(STDOUT_FILENO) != 0;
}

bool standardErrorIsTerminal() {
  return ::isatty(STDERR_FILENO) != 0;
}

}  // namespace quillpress
