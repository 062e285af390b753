// Workers: each library runs programs in processes of its own, as it holds state that belongs to
// the process, may crash, and may be kept busy by a program without end.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/compare/Jobs.h"

namespace bench {

// What became of the programs of one process, in order. The last one may have ended the process.
struct BatchResult {
  std::vector<uint64_t> hashes;
  uint64_t objects = 0;  // of all objects at the end
  enum class End { normal, outOfTime, crash } end = End::normal;
};

// Runs the programs from `first` to before `last` under both libraries at the same time, each in
// its own process.
std::vector<BatchResult> runBatch(const std::vector<std::string>& libraries, const Jobs& jobs,
                                  uint64_t first, uint64_t last);

// What one program's run under a library looks like.
struct SingleResult {
  std::string transcript;
  BatchResult::End end = BatchResult::End::normal;
  bool operator==(const SingleResult&) const = default;
};

// Runs programs in a new process and gives the last one's transcript.
SingleResult runLast(const std::string& library, const std::vector<programs::Program>& programs,
                     int seconds);

}  // namespace bench
