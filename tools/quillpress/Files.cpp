#include "tools/quillpress/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

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
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return "; make room or use another disk";
    default:
      return "";
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
  while (!bytes.empty()) {
    const ssize_t written = ::write(file.get(), bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) {
      fail("cannot write", path, errno);
    }
    bytes.remove_prefix(static_cast<size_t>(std::max<ssize_t>(written, 0)));
  }
}

// The mode of the file that will be replaced, or that of any new file.
mode_t modeFor(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) {
    return status.st_mode & 07777;
  }
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

// A new file beside the place that it is meant for; gone again unless it was moved there.
class FileBeside {
 public:
  FileBeside(const std::string& place, const std::string& nameForUser)
      : target(place),
        shownName(nameForUser),
        name((fs::path(place).parent_path() / ".quillpress-XXXXXX").string()),
        file(::mkstemp(name.data())) {
    if (file.get() < 0) {
      fail("cannot write", shownName, errno);
    }
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;
  ~FileBeside() {
    if (!moved) {
      ::unlink(name.c_str());
    }
  }
  void write(std::string_view bytes) { writeAll(file, bytes, shownName); }
  void moveToPlace() {
    if (::fchmod(file.get(), modeFor(target)) != 0 || !file.close() ||
        ::rename(name.c_str(), target.c_str()) != 0) {
      fail("cannot write", shownName, errno);
    }
    moved = true;
  }

 private:
  std::string target;
  std::string shownName;
  std::string name;
  Descriptor file;
  bool moved = false;
};

}  // namespace

std::string readFile(const std::string& path) {
  const std::string name = path == "-" ? "standard input" : path;
  const Descriptor file(path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
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
  const fs::file_status status = fs::status(path, none);
  if (!fs::exists(status) || fs::is_regular_file(status)) {
    // A link stays one: what it points to is replaced.
    const fs::path place = fs::canonical(path, none);
    FileBeside beside(place.empty() ? path : place.string(), path);
    beside.write(bytes);
    beside.moveToPlace();
    return;
  }
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
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
  return fs::is_regular_file(path, none) && fs::equivalent(path, other, none);
}

}  // namespace quillpress
