// Journal: what was asked of the simulated machine, in order, and where it shall fail.
//
// Each operation enters itself before it works. Those that have a failure value ask may(): the
// journal answers no for the call that a test picked, and the operation fails as its contract says.
// A hook may run before an operation: that is where another process gets its turn.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace umpd {

class Journal {
 public:
  struct Call {
    std::string operation;
    std::u16string detail;
  };

  // Enters an operation that cannot fail.
  void note(const std::string& operation, std::u16string_view detail = {});
  // Enters an operation; false if it shall fail now.
  bool may(const std::string& operation, std::u16string_view detail = {});
  // Gives false, for `return fails(error)`.
  bool fails(uint32_t error);

  // The n-th operation from now that can fail, counted from 1; 0 for none.
  void failCall(size_t n) { countdown_ = n; }
  // Which one it was; empty as long as it has not come.
  const std::string& pickedOperation() const { return failed_; }
  // All operations of a name, until told otherwise.
  void failAlways(const std::string& operation, bool fail = true) { failing_[operation] = fail; }
  void before(const std::string& operation, std::function<void()> hook);

  const std::vector<Call>& calls() const { return log_; }
  size_t count(const std::string& operation) const;
  // The detail of an operation's last call; empty if there was none.
  std::u16string last(const std::string& operation) const;
  void clear() { log_.clear(); }

  uintptr_t newHandle() { return nextHandle_ += 4; }

  uint32_t lastError = 0;

  // The error of a call that was made to fail.
  static constexpr uint32_t deviceNotFunctioning = 31;

 private:
  std::vector<Call> log_;
  std::map<std::string, std::function<void()>> hooks_;
  std::map<std::string, bool> failing_;
  size_t countdown_ = 0;
  std::string failed_;
  uintptr_t nextHandle_ = 0x100;
};

}  // namespace umpd
