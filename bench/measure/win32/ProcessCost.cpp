#include "bench/measure/ProcessCost.h"

#include <windows.h>

#include <psapi.h>

namespace bench {

namespace {
double secondsOf(const FILETIME& time) {
  const uint64_t ticks = uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
  return static_cast<double>(ticks) / 1e7;
}
}  // namespace

double processorSeconds() {
  FILETIME created, ended, kernel, user;
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
  return secondsOf(kernel) + secondsOf(user);
}

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
