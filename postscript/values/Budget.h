// Budget: how much memory one converter's programs may make grow. Whatever a program can enlarge
// without end (strings, stacks, arrays, dictionaries, text, graphics states) takes its share before
// it grows; beyond the limit the run fails with a message instead of eating the machine.
//
// The figures are estimates on the high side. A share may outlive its budget once it is empty.
#pragma once

#include <cstddef>

namespace postscript {

class Budget {
 public:
  static constexpr size_t standard = size_t{2} << 30;

  // 0 for none. What is in use stays, also when it is more.
  void setLimit(size_t bytes) { limit_ = bytes == 0 ? ~size_t{0} : bytes; }
  size_t used() const { return used_; }
  // Fails when so much more is not to be had.
  void expectRoom(size_t bytes) const;

 private:
  friend class BudgetShare;

  size_t limit_ = standard;
  size_t used_ = 0;
};

// What one owner has of a budget; given back at its end.
class BudgetShare {
 public:
  // budget: null for an owner that nobody limits.
  explicit BudgetShare(Budget* budget) : budget_(budget) {}
  BudgetShare(const BudgetShare&) = delete;
  BudgetShare& operator=(const BudgetShare&) = delete;
  ~BudgetShare() { resize(0); }

  // Takes more or gives back. Fails when more is not to be had; the share stays as it was then.
  void resize(size_t bytes) {
    if (bytes == bytes_ || !budget_) {
      return;
    }
    if (bytes > bytes_) {
      budget_->expectRoom(bytes - bytes_);
    }
    budget_->used_ += bytes - bytes_;
    bytes_ = bytes;
  }
  size_t bytes() const { return bytes_; }

 private:
  Budget* budget_;
  size_t bytes_ = 0;
};

}  // namespace postscript
