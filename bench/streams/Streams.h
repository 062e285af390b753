// Streams: inputs without end, made a page at a time, so that what a converter keeps of a long job
// can be told from the job's own bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace streams {

struct Stream {
  const char* name;
  const char* what;
  uint64_t megabytes;  // of a full run
  // The page of the number, from 0: the same bytes each time.
  std::string (*page)(uint64_t number);
};

const std::vector<Stream>& all();

}  // namespace streams
