// What System does the same way everywhere.
#include "tools/quillpress/System.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace quillpress {
namespace {

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
    case EFBIG:
      return "; make room or use another disk";
    default:
      return "";
  }
}

}  // namespace

void failFile(const char* what, const std::string& path, int error) {
  throw FileFailure(std::string(what) + " " + path + ": " + std::generic_category().message(error) +
                    adviceFor(error));
}

bool isSameFile(const std::string& path, const std::string& other) {
  std::error_code none;
  return std::filesystem::is_regular_file(path, none) &&
         std::filesystem::equivalent(path, other, none);
}

}  // namespace quillpress
