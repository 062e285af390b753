// Paths are cut by their separators and dots alone; nothing is asked of the file system. Both kinds
// of separator count everywhere.
#include "umpd/PathParts.h"

#include <algorithm>
#include <utility>

namespace umpd {
namespace {

// What the system's own splitting of paths has room for.
constexpr size_t longestPart = 255;
constexpr size_t driveLength = 2;
// One more than the system takes: a path of just this length stays, and cannot be created.
constexpr size_t longestUntouchedPath = 260;
constexpr size_t longestShortenedPath = 259;

}  // namespace

size_t lastSeparator(std::u16string_view path, size_t first) {
  const size_t found = path.find_last_of(u"\\/");
  return found == path.npos || found < first ? path.npos : found;
}

size_t fileNameStart(std::u16string_view path) {
  const size_t driveEnd = path.size() >= driveLength && path[1] == u':' ? driveLength : 0;
  return std::max(driveEnd, lastSeparator(path) + 1);  // npos + 1 is 0
}

bool endsInSeparator(std::u16string_view path) {
  return path.ends_with(u'\\') || path.ends_with(u'/');
}

PathParts splitPath(std::u16string_view path) {
  PathParts parts;
  if (path.size() >= driveLength && path[1] == u':') {
    parts.drive = path.substr(0, driveLength);
  }
  path.remove_prefix(parts.drive.size());
  const size_t directoryLength = lastSeparator(path) + 1;  // npos + 1 is 0
  const std::u16string_view file = path.substr(directoryLength);
  const size_t dot = std::min(file.rfind(u'.'), file.size());
  parts.directory = path.substr(0, std::min(directoryLength, longestPart));
  parts.name = file.substr(0, std::min(dot, longestPart));
  parts.extension = file.substr(dot, longestPart);
  return parts;
}

// The extension decides which program opens the file, so that it stays whole.
void shortenPath(std::u16string& path) {
  if (path.size() <= longestUntouchedPath) {
    return;
  }
  const PathParts parts = splitPath(path);
  std::u16string shorter(parts.drive);
  const bool directoryFits =
      parts.extension.size() + shorter.size() + parts.directory.size() < longestShortenedPath - 1;
  shorter += directoryFits ? parts.directory : u"\\";
  shorter += parts.name.substr(0, longestShortenedPath - parts.extension.size() - shorter.size());
  shorter += parts.extension;
  path = std::move(shorter);
}

}  // namespace umpd
