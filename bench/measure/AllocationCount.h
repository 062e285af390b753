// Counts the allocations of the process, of a loaded library too where it takes its operator new
// from the program.
#pragma once

#include <cstdint>

namespace bench {

struct AllocationCount {
  uint64_t calls = 0;
  uint64_t bytes = 0;
};

AllocationCount allocations();

}  // namespace bench
