// The system has no call for memory below an address, so that free regions are looked for in its
// map of the process.
#include "umpd/platform/LowPages.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>

namespace umpd {
namespace {

constexpr uintptr_t granularity = 0x10000;
constexpr uintptr_t limit = uintptr_t{1} << 32;

uintptr_t roundedUp(uintptr_t address) {
  return (address + granularity - 1) & ~(granularity - 1);
}

}  // namespace

// Goes from region to region, as the system knows them, and takes the first free one with the room.
std::byte* allocateLowPages(size_t size) {
  MEMORY_BASIC_INFORMATION region{};
  uintptr_t at = granularity;
  while (at < limit && size <= limit - at &&
         VirtualQuery(reinterpret_cast<void*>(at), &region, sizeof region) != 0) {
    const uintptr_t end = reinterpret_cast<uintptr_t>(region.BaseAddress) + region.RegionSize;
    if (region.State == MEM_FREE && end - at >= size) {
      // Another thread may be first.
      if (void* const pages = VirtualAlloc(reinterpret_cast<void*>(at), size,
                                           MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE)) {
        return static_cast<std::byte*>(pages);
      }
    }
    at = roundedUp(end);
  }
  return nullptr;
}

void freeLowPages(std::byte* pages, size_t /*size*/) {
  VirtualFree(pages, 0, MEM_RELEASE);
}

}  // namespace umpd
