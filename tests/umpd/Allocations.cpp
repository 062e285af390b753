#include "tests/umpd/Allocations.h"

#include <cstdlib>
#include <new>

namespace umpd {

thread_local size_t Allocations::left = 0;
thread_local bool Allocations::failed = false;
thread_local int64_t Allocations::alive = 0;

}  // namespace umpd

using umpd::Allocations;

void* operator new(size_t size) {
  if (Allocations::left != 0 && --Allocations::left == 0) {
    Allocations::failed = true;
    throw std::bad_alloc();
  }
  void* const block = std::malloc(size ? size : 1);
  if (!block) {
    throw std::bad_alloc();
  }
  ++Allocations::alive;
  return block;
}

void operator delete(void* block) noexcept {
  Allocations::alive -= block != nullptr;
  std::free(block);
}

void operator delete(void* block, size_t /*size*/) noexcept {
  operator delete(block);
}
