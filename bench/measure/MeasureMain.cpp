// Measures one library on one workload, in a process of its own: scripts/bench runs it and makes a
// table of what it prints.
//
//   measure_library LIBRARY WORKLOAD SIZE [PIECE]         a line of figures
//   measure_library --hash LIBRARY WORKLOAD SIZE          the hash alone, which may be any
//   measure_library --kinds                               the workloads and what they are
//
// The line: seconds S bytes B objects N text T peak P allocations A allocated B hash H. Seconds are
// the time in the library's calls, peak is above what the workload's own text takes, and the hash
// is of the page's text and of all objects, whatever the pieces. The exit status is 1 when the hash
// is not the one that is kept for the workload.
#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/compare/Transcript.h"
#include "bench/measure/AllocationCount.h"
#include "bench/measure/KeptHashes.h"
#include "bench/measure/ProcessCost.h"
#include "bench/workloads/Workloads.h"

namespace {

struct Figures {
  double seconds = 0;
  uint64_t peak = 0;
  bench::AllocationCount allocations;
  std::string text;
};

Figures run(const bench::ConverterLibrary& library, const std::string& program, size_t piece) {
  Figures figures;
  const uint64_t memoryBefore = bench::watchPeakMemory();
  const bench::AllocationCount before = bench::allocations();
  double start = bench::secondsSpent();
  void* converter = library.open(programs::matrices[0].data());
  for (size_t at = 0; at < program.size(); at += piece) {
    auto length = static_cast<int32_t>(std::min(piece, program.size() - at));
    const char* text = library.convert(converter, program.data() + at, &length);
    if (!text) {
      std::fprintf(stderr, "failed: %s", library.error(converter));
      std::exit(1);
    }
    figures.seconds += bench::secondsSpent() - start;
    // Kept outside the time and the counts: the caller's own work.
    figures.peak = bench::peakMemory() - memoryBefore;
    figures.text.append(text, static_cast<size_t>(length));
    start = bench::secondsSpent();
  }
  library.close(converter);
  figures.seconds += bench::secondsSpent() - start;
  const bench::AllocationCount after = bench::allocations();
  figures.allocations = {after.calls - before.calls, after.bytes - before.bytes};
  return figures;
}

int measure(const char* const* words, bool hashOnly) {
  const std::string name = words[1];
  const uint64_t size = std::strtoull(words[2], nullptr, 10);
  const size_t piece = words[3] ? std::strtoull(words[3], nullptr, 10) : size_t{1} << 30;
  const workloads::Workload workload = workloads::makeWorkload(name, size);
  const bench::ConverterLibrary library(words[0]);
  const Figures figures = run(library, workload.text, piece);
  const uint64_t hash = bench::hashOf(figures.text + bench::allObjects(library));
  if (hashOnly) {
    std::printf("%016" PRIx64 "\n", hash);
    return 0;
  }
  const auto kept = bench::keptHash(name, size);
  if (kept && *kept != hash) {
    std::fprintf(stderr,
                 "%s %" PRIu64 ": the text is not what it should be (hash %016" PRIx64 ")\n",
                 name.c_str(), size, hash);
    return 1;
  }
  std::printf("seconds %.6f bytes %zu objects %" PRIu64 " text %zu peak %" PRIu64
              " allocations %" PRIu64 " allocated %" PRIu64 " hash %016" PRIx64 " %s\n",
              figures.seconds, workload.text.size(), workload.objects, figures.text.size(),
              figures.peak, figures.allocations.calls, figures.allocations.bytes, hash,
              kept ? "checked" : "unchecked");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::string(argv[1]) == "--kinds") {
    for (const workloads::Kind& kind : workloads::kinds()) {
      std::printf("%-10s %s\n", kind.name, kind.what);
    }
    return 0;
  }
  const bool hashOnly = argc == 5 && std::string(argv[1]) == "--hash";
  if (argc < 4) {
    std::fprintf(stderr,
                 "usage: measure_library [--hash] LIBRARY WORKLOAD SIZE [PIECE] | --kinds\n");
    return 2;
  }
  return measure(argv + (hashOnly ? 2 : 1), hashOnly);
}
