// The program's operators new, which fail on demand and know how much is in use.
#pragma once

#include <cstdint>

namespace allocations {

// The calls of operator new that follow are numbered from 1. The one of the number fails and, if
// `andAllAfter`, every one after it; 0 for none.
void failAt(uint64_t number, bool andAllAfter = false);

// How many calls there were since then.
uint64_t count();

// How many blocks are in use.
int64_t inUse();

// The most bytes that were in use at a time since `watchPeak`, above what was in use then.
void watchPeak();
int64_t peakBytes();

}  // namespace allocations
