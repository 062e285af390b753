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
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace umpd {

class Journal {
 public:
  struct Call {
    std::string_view operation;
    std::u16string detail;
  };

  Journal() { keepSpare(); }

  // Names of operations are literals: they are kept as they come.
  // Enters an operation that cannot fail.
  void note(std::string_view operation, std::u16string_view detail = {});
  // Enters an operation; false if it shall fail now.
  bool may(std::string_view operation, std::u16string_view detail = {});
  // Enters an operation that takes no memory, as the system's call takes none: destructors make it
  // when there is none left. All that give something back are of this kind.
  void noteReturn(std::string_view operation);
  bool mayReturn(std::string_view operation);
  // Returns false, for `return fails(error)`.
  bool fails(uint32_t error);

  // The n-th operation from now that can fail, counted from 1; 0 for none.
  void failCall(size_t n) { countdown_ = n; }
  // Which one it was; empty as long as it has not come.
  std::string_view pickedOperation() const { return failed_; }
  // All operations of a name, until set otherwise.
  void failAlways(std::string_view operation, bool fail = true) { failing_[operation] = fail; }
  void before(std::string_view operation, std::function<void()> hook);

  const std::vector<Call>& calls() const { return log_; }
  size_t count(std::string_view operation) const;
  // The detail of an operation's last call; empty if there was none.
  std::u16string last(std::string_view operation) const;
  void clear() { log_.clear(); }

  uintptr_t newHandle() { return nextHandle_ += 4; }

  uint32_t lastError = 0;

  // The error of a call that was made to fail.
  static constexpr uint32_t deviceNotFunctioning = 31;

 private:
  void keepSpare();
  void runHook(std::string_view operation);
  bool isPicked(std::string_view operation);

  std::vector<Call> log_;
  // Shared, so that a hook that sets another lives to its own end.
  std::map<std::string_view, std::shared_ptr<std::function<void()>>> hooks_;
  std::map<std::string_view, bool> failing_;
  size_t countdown_ = 0;
  std::string_view failed_;
  uintptr_t nextHandle_ = 0x100;
};

}  // namespace umpd
