#include "tests/memory/Allocations.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

uint64_t calls, failing;
bool failingOn;
int64_t blocks, bytes, peak, bytesBefore;

int64_t sizeOf(void* memory) {
#ifdef _WIN32
  return static_cast<int64_t>(_msize(memory));
#else
  return static_cast<int64_t>(malloc_usable_size(memory));
#endif
}

void* allocate(size_t size) {
  ++calls;
  if (failing != 0 && (calls == failing || (failingOn && calls > failing))) {
    return nullptr;
  }
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory) {
    ++blocks;
    bytes += sizeOf(memory);
    peak = std::max(peak, bytes);
  }
  return memory;
}

void deallocate(void* memory) {
  if (memory) {
    --blocks;
    bytes -= sizeOf(memory);
  }
  std::free(memory);
}

}  // namespace

namespace allocations {

void failAt(uint64_t number, bool andAllAfter) {
  calls = 0;
  failing = number;
  failingOn = andAllAfter;
}

uint64_t count() {
  return calls;
}

int64_t inUse() {
  return blocks;
}

void watchPeak() {
  peak = bytesBefore = bytes;
}

int64_t peakBytes() {
  return peak - bytesBefore;
}

}  // namespace allocations

void* operator new(size_t size) {
  if (void* memory = allocate(size)) {
    return memory;
  }
  throw std::bad_alloc();
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
void* operator new[](size_t size) {
  return operator new(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
void operator delete(void* memory) noexcept {
  deallocate(memory);
}
void operator delete(void* memory, size_t) noexcept {
  deallocate(memory);
}
void operator delete[](void* memory) noexcept {
  deallocate(memory);
}
void operator delete[](void* memory, size_t) noexcept {
  deallocate(memory);
}
