#include "umpd/platform/Owned.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Shelf {
  void close(int handle) { closed.push_back(handle); }
  std::vector<int> closed;
};
using OwnedInt = Owned<Shelf, int>;
using Handles = std::vector<int>;

TEST(Owned, ClosesOnceWhoeverHoldsIt) {
  Shelf shelf;
  {
    OwnedInt first(shelf, 1);
    OwnedInt second(std::move(first));
    EXPECT_FALSE(first);  // NOLINT: what a move leaves is promised
    EXPECT_EQ(second.get(), 1);
    OwnedInt third(shelf, 3);
    third = std::move(second);
    EXPECT_EQ(shelf.closed, Handles{3});
    OwnedInt& itself = third;
    third = std::move(itself);
    EXPECT_EQ(third.get(), 1);
    const OwnedInt none(shelf, 0);
    const OwnedInt nobodys;
    EXPECT_FALSE(none || nobodys);
  }
  EXPECT_EQ(shelf.closed, (Handles{3, 1}));
  shelf.closed.clear();
  {
    OwnedInt given(shelf, 7);
    EXPECT_EQ(given.release(), 7);
    OwnedInt dropped(shelf, 8);
    dropped.reset();
    dropped.reset();
  }
  EXPECT_EQ(shelf.closed, Handles{8});
}

}  // namespace
