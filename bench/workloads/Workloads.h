// Workloads: texts of the kinds that take an interpreter's time, made anew for each run. A name and
// a size are the same bytes on every platform.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace workloads {

struct Workload {
  std::string text;
  uint64_t objects;  // that are run or pushed
};

struct Kind {
  const char* name;
  const char* what;
};

// All kinds, in the order of a table.
const std::vector<Kind>& kinds();

// A text of at least `size` bytes (of some kinds: so many objects), up to the end of the page or
// item then begun. The name is one of kinds().
Workload makeWorkload(std::string_view name, size_t size);
// Another text of the same kind for each seed.
Workload makeWorkload(std::string_view name, size_t size, uint64_t seed);

}  // namespace workloads
