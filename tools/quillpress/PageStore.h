// PageStore: compressed streams on their way to the file. A few megabytes wait in memory; from
// there on they wait in a temporary file, so that memory does not grow with the pages.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "tools/quillpress/Files.h"

namespace quillpress {

struct StoredStream {
  uint64_t place = 0;
  size_t length = 0;
};

// For one writing thread; read only when all is written.
class PageStore {
 public:
  // Throws FileFailure.
  StoredStream put(std::string_view bytes);
  void read(const StoredStream& stream, const std::function<void(std::string_view)>& take);

 private:
  static constexpr size_t memoryLimit = size_t{8} << 20;

  std::string memory_;
  std::optional<ScratchFile> file_;
};

}  // namespace quillpress
