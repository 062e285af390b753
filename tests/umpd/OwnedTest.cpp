#include "umpd/platform/Owned.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace umpd {
namespace {

struct Shelf {
  void close(int handle) { closed.push_back(handle); }
  std::vector<int> closed;
};

TEST(Owned, ClosesOnceWhoeverHoldsIt) {
  using OwnedInt = Owned<Shelf, int>;
  Shelf shelf;
  {
    OwnedInt first(shelf, 1);
    OwnedInt second(std::move(first));
    EXPECT_FALSE(first);  // NOLINT: what a move leaves is promised
    OwnedInt third(shelf, 3);
    third = std::move(second);
    EXPECT_EQ(shelf.closed, std::vector{3});
    OwnedInt& itself = third;
    third = std::move(itself);
    EXPECT_EQ(third.get(), 1);
    EXPECT_EQ(OwnedInt(shelf, 7).release(), 7);
    OwnedInt dropped(shelf, 8);
    dropped.reset();
    EXPECT_FALSE(dropped || OwnedInt(shelf, 0) || OwnedInt());
  }
  EXPECT_EQ(shelf.closed, (std::vector{3, 8, 1}));
}

}  // namespace
}  // namespace umpd
