#include "bench/measure/ProcessCost.h"

#include <windows.h>

#include <psapi.h>

namespace bench {

// Elapsed time: GetProcessTimes counts in steps of 10 ms and more, under Wine as under Windows.
double secondsSpent() {
  LARGE_INTEGER ticks, ticksPerSecond;
  QueryPerformanceCounter(&ticks);
  QueryPerformanceFrequency(&ticksPerSecond);
  return static_cast<double>(ticks.QuadPart) / static_cast<double>(ticksPerSecond.QuadPart);
}

// The peak cannot be reset, so what the process took earlier hides as much of the library's.
uint64_t watchPeakMemory() {
  return peakMemory();
}

uint64_t peakMemory() {
  PROCESS_MEMORY_COUNTERS counters{};
  return GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters))
             ? counters.PeakWorkingSetSize
             : 0;
}

}  // namespace bench
