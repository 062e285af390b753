// LowPages: pages of memory below 4 GiB, as the system at hand gives them.
#pragma once

#include <cstddef>

namespace umpd {

// Zeroed; null if there is no room.
std::byte* allocateLowPages(size_t size);
void freeLowPages(std::byte* pages, size_t size);

}  // namespace umpd
