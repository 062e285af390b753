#include "tools/quillpress/Progress.h"

#include <cstdio>
#include <utility>

#include "tools/quillpress/System.h"

namespace quillpress {

Progress::Progress(std::string name, size_t pages, size_t bytes, bool wanted)
    : name_(std::move(name)),
      pages_(pages),
      bytes_(bytes),
      wanted_(wanted && standardErrorIsTerminal()),
      started_(wallSeconds()),
      last_(started_) {}

void Progress::advance(size_t offset) {
  constexpr double quietSeconds = 1;
  constexpr double interval = 0.1;
  if (!wanted_) {
    return;
  }
  const double now = wallSeconds();
  if (now - started_ < quietSeconds || now - last_ < interval) {
    return;
  }
  last_ = now;
  shown_ = true;
  if (pages_ > 1) {
    std::fprintf(stderr, "\r\x1B[K%s: %zu of %zu pages", name_.c_str(), done_, pages_);
  } else {
    std::fprintf(stderr, "\r\x1B[K%s: %zu of %zu KB", name_.c_str(), offset >> 10, bytes_ >> 10);
  }
}

void Progress::clear() {
  if (std::exchange(shown_, false)) {
    std::fputs("\r\x1B[K", stderr);
  }
}

}  // namespace quillpress
