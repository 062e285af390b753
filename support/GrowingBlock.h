// GrowingBlock: memory that grows at its end and is not cleared. A large block moves without its
// bytes being copied where the system can do that: Linux moves pages to another address (realloc
// does so), and Windows adds pages behind a block in address space that was set aside for it.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdlib>
#include <cstring>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

namespace quillpress::growingBlock {

#ifdef _WIN32

// Smaller blocks come from the heap.
inline constexpr size_t leastReserved = size_t{1} << 20;
// Address space costs nothing as long as no pages are in it.
inline constexpr size_t usualReservation = size_t{256} << 20;

// How much address space a block of a size has; 0 for one from the heap.
inline size_t reservationFor(size_t size) {
  return size < leastReserved ? 0 : std::max(usualReservation, std::bit_ceil(size));
}

inline void free(void* block, size_t size) noexcept {
  if (reservationFor(size) > 0) {
    VirtualFree(block, 0, MEM_RELEASE);
  } else {
    std::free(block);
  }
}

// A block of `to` bytes that begins with the `from` bytes of the old one, which is gone then. Null
// when there is no memory: the old one stays. block: null for none. to: more than `from`.
inline void* grow(void* block, size_t from, size_t to) noexcept {
  const size_t reservation = reservationFor(to);
  if (reservation == 0) {
    return std::realloc(block, to);
  }
  if (reservation == reservationFor(from)) {
    return VirtualAlloc(block, to, MEM_COMMIT, PAGE_READWRITE);
  }
  void* reserved = VirtualAlloc(nullptr, reservation, MEM_RESERVE, PAGE_READWRITE);
  void* grown = reserved ? VirtualAlloc(reserved, to, MEM_COMMIT, PAGE_READWRITE) : nullptr;
  if (!grown) {
    if (reserved) {
      VirtualFree(reserved, 0, MEM_RELEASE);
    }
    return nullptr;
  }
  if (block) {
    std::memcpy(grown, block, from);
    free(block, from);
  }
  return grown;
}

#else

inline void free(void* block, size_t) noexcept {
  std::free(block);
}

inline void* grow(void* block, size_t, size_t to) noexcept {
  return std::realloc(block, to);
}

#endif

}  // namespace quillpress::growingBlock
