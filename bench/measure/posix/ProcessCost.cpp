#include "bench/measure/ProcessCost.h"

#include <ctime>
#include <fstream>
#include <string>

namespace bench {

double secondsSpent() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

uint64_t watchPeakMemory() {
  std::ofstream("/proc/self/clear_refs") << "5";
  return peakMemory();
}

uint64_t peakMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    uint64_t kilobytes = 0;
    if (word == "VmHWM:" && status >> kilobytes) {
      return kilobytes * 1024;
    }
  }
  return 0;
}

}  // namespace bench
