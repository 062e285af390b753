#include "bench/measure/ProcessCost.h"

#include <sys/resource.h>

#include <ctime>

namespace bench {

double processorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

uint64_t peakMemory() {
  rusage use{};
  getrusage(RUSAGE_SELF, &use);
  return static_cast<uint64_t>(use.ru_maxrss) * 1024;
}

}  // namespace bench
