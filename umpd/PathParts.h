// PathParts: a path cut into drive, directory, file name and extension, and the shortening of a
// path that the system would not take.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace umpd {

// The position of the last `\` or `/` from `first` on, or npos.
size_t lastSeparator(std::u16string_view path, size_t first = 0);
// Where the file's own name begins, without drive and directory.
size_t fileNameStart(std::u16string_view path);
bool endsInSeparator(std::u16string_view path);

// Views into the path that was split. Joined they are the path again, unless a part was
// cut at its room: 2 characters for the drive, 255 for each of the others.
struct PathParts {
  std::u16string_view drive;      // a character and its colon
  std::u16string_view directory;  // up to the last separator, which belongs to it
  std::u16string_view name;
  std::u16string_view extension;  // from the last dot on
};
PathParts splitPath(std::u16string_view path);

// Leaves up to 260 characters alone. A longer path comes back with at most 259: its directory
// becomes a lone backslash if it is too long, then its file name is cut. Drive and extension stay.
void shortenPath(std::u16string& path);

}  // namespace umpd
