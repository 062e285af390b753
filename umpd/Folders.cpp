// Folders are asked of the system each time, but for the driver directory: every job needs it
// several times, and it stays the same for the life of the process.
#include "umpd/Folders.h"

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <utility>

#include "umpd/ProductNames.h"

namespace umpd {
namespace {

constexpr std::u16string_view separators = u"/\\";

// Each line of the system keeps the files of its drivers apart.
std::u16string_view versionSubdirectory(SystemVersion& version) {
  if (version.isNt4()) {
    return u"\\2\\";
  }
  if (version.isWin2kOrLater()) {
    return u"\\3\\";
  }
  return u"\\";
}

// Empty on failure.
std::u16string queryDriverDirectory(Platform& platform) {
  const bool narrow = platform.version.isWin9x();
  const uint32_t size = platform.spooler.driverDirectorySize(narrow);
  if (size == 0) {
    return {};
  }
  const auto directory = platform.spooler.driverDirectory(narrow, size);
  if (!directory || directory->empty()) {
    return {};
  }
  return *directory + std::u16string(versionSubdirectory(platform.version));
}

}  // namespace

// A failure is not remembered: the spooler may be there the next time.
std::optional<std::u16string> getDriverDirectory(Platform& platform, size_t capacity) {
  if (capacity == 0) {
    return std::nullopt;
  }
  const std::lock_guard lock(platform.process.directoryMutex);
  std::u16string& known = platform.process.driverDirectory;
  if (known.empty()) {
    known = queryDriverDirectory(platform);
  }
  // A path that fills the capacity is given; those who append to it look at their room themselves.
  if (known.empty() || capacity < known.size()) {
    return std::nullopt;
  }
  return known;
}

std::optional<std::u16string> driverFile(Platform& platform, std::u16string_view name) {
  auto path = getDriverDirectory(platform, pathCapacity);
  if (!path || path->size() + name.size() >= pathCapacity) {
    return std::nullopt;
  }
  path->append(name);
  return path;
}

std::u16string applicationDataFolder(Platform& platform) {
  for (const auto each : {SpecialFolder::localApplicationData, SpecialFolder::applicationData}) {
    if (auto folder = platform.files.specialFolder(each); folder && !folder->empty()) {
      return std::move(*folder);
    }
  }
  return {};
}

std::u16string productDataFolder(Platform& platform) {
  std::u16string folder = applicationDataFolder(platform);
  if (folder.empty()) {
    return u"c:\\";
  }
  folder += u'\\';
  folder += productName;
  if (!platform.files.attributes(folder)) {
    makeDirectories(platform, folder);
  }
  return folder;
}

// The path is taken apart at its separators and put together with `/`. The two in front of a
// server's name are lost on the way, which makes such a path a relative one: its directory has to
// exist.
bool makeDirectories(Platform& platform, std::u16string_view path) {
  std::u16string made;
  size_t start = path.find_first_not_of(separators);
  if (start == std::u16string_view::npos) {
    return false;
  }
  while (start != std::u16string_view::npos) {
    const size_t end = std::min(path.find_first_of(separators, start), path.size());
    if (!made.empty()) {
      made += u'/';
    }
    made += path.substr(start, end - start);
    const auto attributes = platform.files.attributes(made);
    if (attributes && (*attributes & attributeDirectory) == 0) {
      return false;
    }
    // One that cannot be made stops nothing: those below it may exist anyway.
    if (!attributes) {
      platform.files.makeDirectory(made);
    }
    start = path.find_first_not_of(separators, end);
  }
  return true;
}

}  // namespace umpd
