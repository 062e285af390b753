// The hashes of the texts and objects that workloads lead to, kept with the source: a library that
// is fast and wrong gets no time.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace bench {

// Nothing if none is kept for the size.
std::optional<uint64_t> keptHash(std::string_view workload, uint64_t size);

}  // namespace bench
