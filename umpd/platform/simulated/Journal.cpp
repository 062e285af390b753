#include "umpd/platform/simulated/Journal.h"

#include <algorithm>
#include <utility>

void Journal::note(const std::string& operation, std::u16string_view detail) {
  log.push_back({operation, std::u16string(detail)});
  // A copy: a hook may set another.
  if (const auto hook = hooks.find(operation); hook != hooks.end())
    std::function<void()>(hook->second)();
}

bool Journal::may(const std::string& operation, std::u16string_view detail) {
  note(operation, detail);
  const bool picked = countdown != 0 && --countdown == 0;
  if (picked) failed = operation;
  const auto always = failing.find(operation);
  if (picked || (always != failing.end() && always->second)) return fails(deviceNotFunctioning);
  return true;
}

bool Journal::fails(std::uint32_t error) {
  lastError = error;
  return false;
}

void Journal::before(const std::string& operation, std::function<void()> hook) {
  hooks[operation] = std::move(hook);
}

std::size_t Journal::count(const std::string& operation) const {
  return static_cast<std::size_t>(std::count_if(
      log.begin(), log.end(), [&](const Call& call) { return call.operation == operation; }));
}

std::u16string Journal::last(const std::string& operation) const {
  const auto call = std::find_if(log.rbegin(), log.rend(),
                                 [&](const Call& c) { return c.operation == operation; });
  return call == log.rend() ? std::u16string() : call->detail;
}
