#include "postscript/values/ObjectPool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <thread>
#include <vector>

#include "support/GrowingBlock.h"

namespace postscript {
namespace {

struct FilledBlock {
  unsigned char* bytes;
  size_t size;
};

unsigned char fillOf(size_t size) {
  return static_cast<unsigned char>(size * 31 + size / 256);
}

// One of each size to beyond the largest that the lists keep.
std::vector<FilledBlock> fillBlocks() {
  std::vector<FilledBlock> blocks;
  for (size_t size = 1; size <= objectPool::largestPooled + 100; ++size) {
    blocks.push_back({static_cast<unsigned char*>(objectPool::allocate(size)), size});
    std::memset(blocks.back().bytes, fillOf(size), size);
  }
  return blocks;
}

void expectFilled(const std::vector<FilledBlock>& blocks) {
  for (const auto& [bytes, size] : blocks) {
    EXPECT_TRUE(std::all_of(bytes, bytes + size, [size = size](auto b) {
      return b == fillOf(size);
    })) << size;
  }
}

void freeBlocks(const std::vector<FilledBlock>& blocks) {
  for (const auto& [bytes, size] : blocks) {
    objectPool::free(bytes, size);
  }
}

// Blocks of one thread are freed by another, which hands them out again to itself alone.
TEST(ObjectPool, GivesBlocksOfFullSizeThatShareNothing) {
  std::vector<FilledBlock> passed;
  for (int round = 0; round < 3; ++round) {
    std::thread other([&passed] {
      freeBlocks(passed);
      passed = fillBlocks();
      freeBlocks(fillBlocks());
    });
    other.join();
    const std::vector<FilledBlock> own = fillBlocks();
    expectFilled(passed);
    expectFilled(own);
    freeBlocks(own);
    objectPool::releaseUnused();
  }
  expectFilled(passed);
  freeBlocks(passed);
}

TEST(GrowingBlock, KeepsItsBytesWhileItGrows) {
  using quillpress::growingBlock::grow;
  // AddressSanitizer ends the process for it.
  if (objectPool::usesLists) {
    EXPECT_EQ(grow(nullptr, 0, size_t{1} << 50), nullptr);
  }
  size_t size = 0;
  char* block = nullptr;
  std::vector<size_t> ends;
  for (const size_t next : {size_t{100}, size_t{1} << 20, size_t{3} << 20, size_t{255} << 20,
                            size_t{257} << 20, size_t{500} << 20}) {
    block = static_cast<char*>(grow(block, size, next));
    ASSERT_NE(block, nullptr);
    size = next;
    ends.push_back(size - 1);
    block[size - 1] = static_cast<char>(ends.size());
    for (size_t i = 0; i < ends.size(); ++i) {
      EXPECT_EQ(block[ends[i]], static_cast<char>(i + 1));
    }
  }
  quillpress::growingBlock::free(block, size);
}

}  // namespace
}  // namespace postscript
