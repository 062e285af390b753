// Tries one address after the other, from the lowest that the kernel allows, until a mapping can be
// made there without replacing one.
#include "umpd/platform/LowPages.h"

#include <sys/mman.h>

#include <cstddef>
#include <cstdint>

namespace umpd {
namespace {

constexpr uintptr_t first = 0x10000;
constexpr uintptr_t step = 0x10000;
constexpr uintptr_t limit = uintptr_t{1} << 32;

}  // namespace

std::byte* allocateLowPages(size_t size) {
  for (uintptr_t at = first; size <= limit - at; at += step) {
    void* const pages = mmap(reinterpret_cast<void*>(at), size, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    if (pages == MAP_FAILED) {
      continue;
    }
    // An old kernel takes the address for a hint.
    if (reinterpret_cast<uintptr_t>(pages) == at) {
      return static_cast<std::byte*>(pages);
    }
    munmap(pages, size);
  }
  return nullptr;
}

void freeLowPages(std::byte* pages, size_t size) {
  munmap(pages, size);
}

}  // namespace umpd
