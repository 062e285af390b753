// The log keeps room for calls that give something back, so that they can be entered when no memory
// is left: an operation that enters itself with note() makes the room for those after it.
#include "umpd/platform/simulated/Journal.h"

#include <algorithm>
#include <utility>

namespace umpd {

void Journal::note(std::string_view operation, std::u16string_view detail) {
  keepSpare();
  log_.push_back({operation, std::u16string(detail)});
  runHook(operation);
}

bool Journal::may(std::string_view operation, std::u16string_view detail) {
  note(operation, detail);
  return !isPicked(operation) || fails(deviceNotFunctioning);
}

// Without spare room the call is not on record.
void Journal::noteReturn(std::string_view operation) {
  if (log_.size() < log_.capacity()) {
    log_.push_back({operation, {}});
  }
  runHook(operation);
}

bool Journal::mayReturn(std::string_view operation) {
  noteReturn(operation);
  return !isPicked(operation) || fails(deviceNotFunctioning);
}

// More than a process of the tests has open at once.
void Journal::keepSpare() {
  constexpr size_t spare = 200;
  if (log_.capacity() - log_.size() < spare) {
    log_.reserve(2 * (log_.capacity() + spare));
  }
}

void Journal::runHook(std::string_view operation) {
  const auto found = hooks_.find(operation);
  if (found == hooks_.end()) {
    return;
  }
  const std::shared_ptr<std::function<void()>> hook = found->second;
  (*hook)();
}

// Only calls that can fail are counted, so that each number picks a failure of its own.
bool Journal::isPicked(std::string_view operation) {
  const bool picked = countdown_ != 0 && --countdown_ == 0;
  if (picked) {
    failed_ = operation;
  }
  const auto always = failing_.find(operation);
  return picked || (always != failing_.end() && always->second);
}

bool Journal::fails(uint32_t error) {
  lastError = error;
  return false;
}

void Journal::before(std::string_view operation, std::function<void()> hook) {
  hooks_[operation] = std::make_shared<std::function<void()>>(std::move(hook));
}

size_t Journal::count(std::string_view operation) const {
  return static_cast<size_t>(std::count_if(
      log_.begin(), log_.end(), [&](const Call& call) { return call.operation == operation; }));
}

// Looked for from the end.
std::u16string Journal::last(std::string_view operation) const {
  const auto call = std::find_if(log_.rbegin(), log_.rend(),
                                 [&](const Call& c) { return c.operation == operation; });
  return call == log_.rend() ? std::u16string() : call->detail;
}

}  // namespace umpd
