#include "bench/measure/KeptHashes.h"

namespace bench {

namespace {

struct Kept {
  std::string_view workload;
  uint64_t size;
  uint64_t hash;
};

constexpr Kept all[] = {
#include "bench/measure/KeptHashes.inc"
};

}  // namespace

std::optional<uint64_t> keptHash(std::string_view workload, uint64_t size) {
  for (const Kept& kept : all) {
    if (kept.workload == workload && kept.size == size) {
      return kept.hash;
    }
  }
  return std::nullopt;
}

}  // namespace bench
