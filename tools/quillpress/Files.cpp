#include "tools/quillpress/Files.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "tools/quillpress/system/System.h"

namespace quillpress {
namespace {

namespace fs = std::filesystem;

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

// A descriptor that closes itself; the standard streams' ones stay open.
class Descriptor {
 public:
  explicit Descriptor(int descriptor) : number(descriptor) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(); }
  int get() const { return number; }
  bool close() {
    const int closing = std::exchange(number, -1);
    return closing <= STDERR_FILENO || ::close(closing) == 0;
  }

 private:
  int number;
};

void writeAll(const Descriptor& file, std::string_view bytes, const std::string& path) {
  constexpr size_t most = 1 << 24;  // a system's call may take no more than an int can count
  while (!bytes.empty()) {
    const auto length = static_cast<unsigned>(std::min(bytes.size(), most));
    const ssize_t written = ::write(file.get(), bytes.data(), length);
    if (written < 0 && errno != EINTR) {
      fail("cannot write", path, errno);
    }
    bytes.remove_prefix(static_cast<size_t>(std::max<ssize_t>(written, 0)));
  }
}

// A new file beside the place that it is meant for; gone again unless it was moved there.
class FileBeside {
 public:
  FileBeside(const fs::path& place, const std::string& nameForUser)
      : target(place), shownName(nameForUser), file(createBeside(place, name)) {
    if (file.get() < 0) {
      fail("cannot write", shownName, errno);
    }
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;
  ~FileBeside() {
    if (!moved) {
      file.close();
      std::error_code none;
      fs::remove(name, none);
    }
  }
  void write(std::string_view bytes) { writeAll(file, bytes, shownName); }
  void moveToPlace() {
    if (!setPermissions(file.get(), target) || !file.close()) {
      fail("cannot write", shownName, errno);
    }
    std::error_code error;
    fs::rename(name, target, error);
    if (error) {
      fail("cannot write", shownName, error.default_error_condition().value());
    }
    moved = true;
  }

 private:
  fs::path target;
  std::string shownName;
  fs::path name;
  Descriptor file;
  bool moved = false;
};

}  // namespace

std::string readFile(const std::string& path) {
  const std::string name = path == "-" ? "standard input" : path;
  const Descriptor file(path == "-" ? STDIN_FILENO : openToRead(systemPath(path)));
  if (file.get() < 0) {
    fail("cannot read", name, errno);
  }
  std::string bytes;
  std::array<char, 65536> block;
  for (;;) {
    const ssize_t count = ::read(file.get(), block.data(), block.size());
    if (count == 0) {
      return bytes;
    }
    if (count > 0) {
      bytes.append(block.data(), static_cast<size_t>(count));
    } else if (errno != EINTR) {
      fail("cannot read", name, errno);
    }
  }
}

void writeFile(const std::string& path, std::string_view bytes) {
  if (path == "-") {
    writeAll(Descriptor(STDOUT_FILENO), bytes, "standard output");
    return;
  }
  std::error_code none;
  const fs::path given = systemPath(path);
  const fs::file_status status = fs::status(given, none);
  if (!fs::exists(status) || fs::is_regular_file(status)) {
    // A link stays one: what it points to is replaced.
    const fs::path place = fs::canonical(given, none);
    FileBeside beside(place.empty() ? given : place, path);
    beside.write(bytes);
    beside.moveToPlace();
    return;
  }
  Descriptor file(openToWrite(given));
  if (file.get() < 0) {
    fail("cannot write", path, errno);
  }
  writeAll(file, bytes, path);
  if (!file.close()) {
    fail("cannot write", path, errno);
  }
}

bool isSameFile(const std::string& path, const std::string& other) {
  std::error_code none;
  const fs::path first = systemPath(path);
  return fs::is_regular_file(first, none) && fs::equivalent(first, systemPath(other), none);
}

}  // namespace quillpress
