// Owned: a handle that gives itself back. The group of operations that made the handle closes it;
// Handle{} means "none". Closing leaves the thread's last error as it was, as a report may follow.
#pragma once

#include <utility>

template <class Group, class Handle>
class Owned {
 public:
  Owned() = default;
  Owned(Group& owner, Handle owned) : group(&owner), handle(owned) {}
  Owned(Owned&& other) noexcept : group(other.group), handle(other.release()) {}
  Owned& operator=(Owned&& other) noexcept {
    if (this != &other) {
      reset();
      group = other.group;
      handle = other.release();
    }
    return *this;
  }
  ~Owned() { reset(); }

  Handle get() const { return handle; }
  explicit operator bool() const { return handle != Handle{}; }
  Handle release() { return std::exchange(handle, Handle{}); }
  void reset() {
    if (handle != Handle{}) group->close(release());
  }

 private:
  Group* group = nullptr;
  Handle handle{};
};
