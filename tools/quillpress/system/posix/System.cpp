#include "tools/quillpress/system/System.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>

namespace quillpress {

std::vector<std::string> systemArguments(int argc, char** argv) {
  return {argv, argv + argc};
}

void makeStandardStreamsBinary() {}

std::filesystem::path systemPath(const std::string& utf8) {
  return utf8;
}

int openToRead(const std::filesystem::path& path) {
  return ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

int openToWrite(const std::filesystem::path& path) {
  return ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
}

int createBeside(const std::filesystem::path& place, std::filesystem::path& made) {
  std::string name = (place.parent_path() / ".quillpress-XXXXXX").string();
  const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
  made = name;
  return descriptor;
}

bool setPermissions(int descriptor, const std::filesystem::path& replaced) {
  struct stat status {};
  if (::stat(replaced.c_str(), &status) == 0) {
    return ::fchmod(descriptor, status.st_mode & 07777) == 0;
  }
  // The mask can only be read by setting it.
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return ::fchmod(descriptor, 0666 & ~mask) == 0;
}

bool isDiskFull(int error) {
  return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

}  // namespace quillpress
