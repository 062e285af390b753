// The shadow's path repeats the real one below the browser's cache: the drive's letter, then the
// rest of the path without its colon. Each piece is cut where the whole would get too long.
#include "umpd/ProtectedMode.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "umpd/Folders.h"

namespace umpd {
namespace {

constexpr size_t longestPath = 519;

void appendBounded(std::u16string& path, std::u16string_view text) {
  path += text.substr(0, longestPath - std::min(path.size(), longestPath));
}

}  // namespace

std::u16string virtualizedTempPath(Platform& platform) {
  constexpr size_t behindColon = 2;
  const std::u16string data = applicationDataFolder(platform);
  const std::u16string_view all = data;
  std::u16string path;
  appendBounded(path, all);
  appendBounded(path, u"\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\");
  appendBounded(path, all.substr(0, 1));
  appendBounded(path, all.substr(std::min(behindColon, all.size())));
  if (!path.ends_with(u'\\')) {
    appendBounded(path, u"\\");
  }
  return path;
}

}  // namespace umpd
