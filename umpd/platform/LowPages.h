// LowPages: pages of memory below 4 GiB, by the means of the system that this is built for.
#pragma once

#include <cstddef>

namespace umpd {

// Zeroed; null if there is no room.
std::byte* allocateLowPages(size_t size);
void freeLowPages(std::byte* pages, size_t size);

}  // namespace umpd
