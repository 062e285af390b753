// What a process has cost so far; there is one implementation for each system.
#pragma once

#include <cstdint>

namespace bench {

// Seconds of processor time, in the program and in the system.
double processorSeconds();

// The most memory that was in use at a time, in bytes; 0 if the system does not tell.
uint64_t peakMemory();

}  // namespace bench
