// Owned: a handle that closes itself. The group of operations that made the handle closes it;
// Handle{} means "none". Closing leaves the thread's last error as it was, as a report may follow.
#pragma once

#include <utility>

namespace umpd {

template <class Group, class Handle>
class Owned {
 public:
  Owned() = default;
  Owned(Group& group, Handle handle) : group_(&group), handle_(handle) {}
  Owned(Owned&& other) noexcept : group_(other.group_), handle_(other.release()) {}
  Owned& operator=(Owned&& other) noexcept {
    if (this != &other) {
      reset();
      group_ = other.group_;
      handle_ = other.release();
    }
    return *this;
  }
  ~Owned() { reset(); }

  Handle get() const { return handle_; }
  explicit operator bool() const { return handle_ != Handle{}; }
  Handle release() { return std::exchange(handle_, Handle{}); }
  void reset() {
    if (handle_ != Handle{}) {
      group_->close(release());
    }
  }

 private:
  Group* group_ = nullptr;
  Handle handle_{};
};

}  // namespace umpd
