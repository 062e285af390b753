// What a process has cost so far; there is one implementation for each system.
#pragma once

#include <cstdint>

namespace bench {

// Seconds of processor time, in the program and in the system; of elapsed time where the system
// counts processor time in steps too large for short runs.
double secondsSpent();

// Begins to look for the most memory that is in use at a time, and returns what is in use now, in
// bytes; 0 if the system does not tell.
uint64_t watchPeakMemory();
// The most since then, in bytes; 0 if the system does not tell.
uint64_t peakMemory();

}  // namespace bench
