// Budget: how much memory one converter's programs may make grow. Whatever a program can enlarge
// without end takes its share before it grows: values and stacks, names, texts that are being
// gathered, the content text, graphics states, and the objects that the converter has added to the
// list of the process. Beyond the limit the run fails with a message instead of eating the machine.
//
// The figures are estimates on the high side: a test compares them with what is allocated. A share
// may outlive its budget once it is empty.
#pragma once

#include <algorithm>
#include <cstddef>

namespace postscript {

class Budget {
 public:
  static constexpr size_t standard = size_t{2} << 30;

  // 0 for none. What is in use stays, also when it is more.
  void setLimit(size_t bytes) { limit_ = bytes == 0 ? ~size_t{0} : bytes; }
  size_t used() const { return used_; }
  // Fails when so much more is not to be had.
  void expectRoom(size_t bytes) const {
    if (!hasRoom(bytes)) [[unlikely]] {
      fail();
    }
  }
  bool hasRoom(size_t bytes) const { return used_ <= limit_ && bytes <= limit_ - used_; }

 private:
  friend class BudgetShare;
  [[noreturn]] static void fail();

  size_t limit_ = standard;
  size_t used_ = 0;
};

// What one owner has of a budget; given back at its end.
class BudgetShare {
 public:
  // budget: null for an owner that nobody limits.
  explicit BudgetShare(Budget* budget) : budget_(budget) {}
  // Takes so much at once.
  BudgetShare(Budget* budget, size_t bytes) : budget_(budget) { resize(bytes); }
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
    set(bytes);
  }
  // The same for memory that moves when it grows: for a while the old stands beside the new.
  void resizeMoving(size_t bytes) {
    if (!budget_) {
      return;
    }
    if (bytes > bytes_) {
      budget_->expectRoom(bytes);
    }
    set(bytes);
  }
  // Before a text, which has `others` beside it in this share, grows to so many bytes.
  template <class String>
  void expectText(const String& text, size_t bytes, size_t others = 0) {
    if (bytes > text.capacity()) {
      resizeMoving(others + std::max(bytes, 2 * text.capacity()));
    }
  }
  // All of it becomes part of another share of the same budget.
  void moveTo(BudgetShare& other) {
    other.bytes_ += bytes_;
    bytes_ = 0;
  }
  size_t bytes() const { return bytes_; }

 private:
  void set(size_t bytes) {
    budget_->used_ += bytes - bytes_;
    bytes_ = bytes;
  }

  Budget* budget_;
  size_t bytes_ = 0;
};

}  // namespace postscript
