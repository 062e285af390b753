// Counts work instead of time, so that a test of growth says the same on every machine.
#pragma once

#include <cstdint>

namespace growth {

// What has been done since the program began: blocks of the converter's code that ran, and a unit
// for every 16 bytes that were moved, compared or allocated.
uint64_t workSoFar();

}  // namespace growth
