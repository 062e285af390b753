// Allocations: each thread's, of this program of tests: counted, and one of them made to fail.
#pragma once

#include <cstddef>
#include <cstdint>

namespace umpd {

struct Allocations {
  static thread_local size_t left;  // until one fails; 0: none does
  static thread_local bool failed;
  static thread_local int64_t alive;
};

}  // namespace umpd
