#include "umpd/ProtectedMode.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::size_t longestPath = 519;

std::u16string applicationData(Platform& platform) {
  for (const auto folder : {SpecialFolder::localApplicationData, SpecialFolder::applicationData}) {
    const std::optional<std::u16string> path = platform.files.specialFolder(folder);
    if (path && !path->empty()) return *path;
  }
  return {};
}

void appendBounded(std::u16string& path, std::u16string_view text) {
  path += text.substr(0, longestPath - std::min(path.size(), longestPath));
}

}  // namespace

std::u16string virtualizedTempPath(Platform& platform) {
  constexpr std::size_t behindColon = 2;
  const std::u16string data = applicationData(platform);
  const std::u16string_view all = data;
  std::u16string path;
  appendBounded(path, all);
  appendBounded(path, u"\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\");
  appendBounded(path, all.substr(0, 1));
  appendBounded(path, all.substr(std::min(behindColon, all.size())));
  if (!path.ends_with(u'\\')) appendBounded(path, u"\\");
  return path;
}
