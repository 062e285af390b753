// Prints a line for each random program of a range: its seed and the hash of all that a caller can
// see of its run. It is there for libraries that no worker process can be forked with, such as the
// DLL under Wine: the lines of two libraries are compared. hash_programs LIBRARY FROM TO
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "bench/compare/Transcript.h"

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: hash_programs LIBRARY FROM TO\n");
    return 2;
  }
  const bench::ConverterLibrary library(argv[1]);
  const uint64_t last = std::strtoull(argv[3], nullptr, 10);
  for (uint64_t seed = std::strtoull(argv[2], nullptr, 10); seed < last; ++seed) {
    programs::SeededChoices choices(seed);
    const std::string transcript = bench::transcriptOf(library, programs::makeProgram(choices));
    std::printf("%" PRIu64 " %016" PRIx64 "\n", seed, bench::hashOf(transcript));
  }
  return 0;
}
