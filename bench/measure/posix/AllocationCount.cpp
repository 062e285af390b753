#include "bench/measure/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<uint64_t> calls, bytes;

// Only one thread allocates while it matters, so the counters need no more than to be no race.
void* counted(size_t size) {
  calls.store(calls.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
  bytes.store(bytes.load(std::memory_order_relaxed) + size, std::memory_order_relaxed);
  return std::malloc(size == 0 ? 1 : size);
}

}  // namespace

// Seen by libraries that are loaded, which then count as well.
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

void* operator new(size_t size) {
  if (void* memory = counted(size)) {
    return memory;
  }
  throw std::bad_alloc();
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return counted(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, size_t) noexcept {
  std::free(memory);
}

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif

namespace bench {

AllocationCount allocations() {
  return {calls, bytes};
}

}  // namespace bench
