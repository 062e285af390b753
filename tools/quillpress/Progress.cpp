#include "tools/quillpress/Progress.h"

#include <chrono>
#include <cstdio>
#include <utility>

#include "tools/quillpress/Files.h"

namespace quillpress {
namespace {

double wallSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace

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
