// Folders: where the product's files lie, and making the way to them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "umpd/platform/Platform.h"

namespace umpd {

// The limit of most paths, in characters, terminator included.
inline constexpr size_t pathCapacity = 260;

// The spooler's driver directory with its version subdirectory, ending in a backslash. Empty if it
// cannot be had or is longer than `capacity`.
std::optional<std::u16string> getDriverDirectory(Platform& platform, size_t capacity);

// A file of the product in the driver directory; empty if a path has no room for its name.
std::optional<std::u16string> driverFile(Platform& platform, std::u16string_view name);

// The user's application data, local if there is such a folder; empty if there is none.
std::u16string applicationDataFolder(Platform& platform);

// The product's folder in the user's application data, made if it is missing.
std::u16string productDataFolder(Platform& platform);

// Makes what is missing of a path. False if the path names nothing, or if something on its way
// exists and is no directory.
bool makeDirectories(Platform& platform, std::u16string_view path);

}  // namespace umpd
