#include "tests/growth/WorkCount.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

uint64_t blocks, bytes;

void* counted(size_t size) {
  bytes += size;
  return std::malloc(size == 0 ? 1 : size);
}

}  // namespace

namespace growth {

uint64_t workSoFar() {
  return blocks + bytes / 16;
}

}  // namespace growth

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

extern "C" {

// Called by the compiler's instrumentation at the start of each block.
void __sanitizer_cov_trace_pc() {
  ++blocks;
}

// The linker has the C library's functions called by way of these.
#define COUNT_BYTES(function, Result, parameters, arguments, count) \
  Result __real_##function parameters;                              \
  Result __wrap_##function parameters;                              \
  Result __wrap_##function parameters {                             \
    bytes += count;                                                 \
    return __real_##function arguments;                             \
  }
COUNT_BYTES(memcpy, void*, (void* to, const void* from, size_t size), (to, from, size), size)
COUNT_BYTES(memmove, void*, (void* to, const void* from, size_t size), (to, from, size), size)
COUNT_BYTES(memcmp, int, (const void* a, const void* b, size_t size), (a, b, size), size)
COUNT_BYTES(memset, void*, (void* to, int byte, size_t size), (to, byte, size), size)
COUNT_BYTES(memchr, void*, (const void* in, int byte, size_t size), (in, byte, size), size)
#undef COUNT_BYTES

size_t __real_strlen(const char* text);
size_t __wrap_strlen(const char* text);
size_t __wrap_strlen(const char* text) {
  const size_t size = __real_strlen(text);
  bytes += size;
  return size;
}

}  // extern "C"
