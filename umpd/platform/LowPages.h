// LowPages: pages of memory below 4 GiB, as the system at hand gives them.
#pragma once

#include <cstddef>

// Zeroed; null if there is no room.
std::byte* allocateLowPages(std::size_t size);
void freeLowPages(std::byte* pages, std::size_t size);
