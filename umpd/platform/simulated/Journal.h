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
  bool fails(std::uint32_t error);

  // The n-th operation from now that can fail, counted from 1; 0 for none.
  void failCall(std::size_t n) { countdown = n; }
  // Which one it was; empty as long as it has not come.
  const std::string& pickedOperation() const { return failed; }
  // All operations of a name, until told otherwise.
  void failAlways(const std::string& operation, bool fail = true) { failing[operation] = fail; }
  void before(const std::string& operation, std::function<void()> hook);

  const std::vector<Call>& calls() const { return log; }
  std::size_t count(const std::string& operation) const;
  // The detail of an operation's last call; empty if there was none.
  std::u16string last(const std::string& operation) const;
  void clear() { log.clear(); }

  std::uintptr_t newHandle() { return nextHandle += 4; }

  std::uint32_t lastError = 0;

  // The error of a call that was made to fail.
  static constexpr std::uint32_t deviceNotFunctioning = 31;

 private:
  std::vector<Call> log;
  std::map<std::string, std::function<void()>> hooks;
  std::map<std::string, bool> failing;
  std::size_t countdown = 0;
  std::string failed;
  std::uintptr_t nextHandle = 0x100;
};
