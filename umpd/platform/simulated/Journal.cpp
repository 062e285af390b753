#include "umpd/platform/simulated/Journal.h"

#include <algorithm>
#include <utility>

namespace umpd {

void Journal::note(const std::string& operation, std::u16string_view detail) {
  log_.push_back({operation, std::u16string(detail)});
  // A copy: a hook may set another.
  if (const auto hook = hooks_.find(operation); hook != hooks_.end()) {
    std::function<void()>(hook->second)();
  }
}

bool Journal::may(const std::string& operation, std::u16string_view detail) {
  note(operation, detail);
  const bool picked = countdown_ != 0 && --countdown_ == 0;
  if (picked) {
    failed_ = operation;
  }
  const auto always = failing_.find(operation);
  if (picked || (always != failing_.end() && always->second)) {
    return fails(deviceNotFunctioning);
  }
  return true;
}

bool Journal::fails(uint32_t error) {
  lastError = error;
  return false;
}

void Journal::before(const std::string& operation, std::function<void()> hook) {
  hooks_[operation] = std::move(hook);
}

size_t Journal::count(const std::string& operation) const {
  return static_cast<size_t>(std::count_if(
      log_.begin(), log_.end(), [&](const Call& call) { return call.operation == operation; }));
}

std::u16string Journal::last(const std::string& operation) const {
  const auto call = std::find_if(log_.rbegin(), log_.rend(),
                                 [&](const Call& c) { return c.operation == operation; });
  return call == log_.rend() ? std::u16string() : call->detail;
}

}  // namespace umpd
