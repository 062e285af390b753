// Blocks are allocated one by one, so that any of them can go back to the system on its own. The
// lists are plain data without a constructor, which keeps access to the thread's copy cheap; a
// second object with a destructor, touched when a list is empty, empties them when the thread ends.
#include "postscript/values/ObjectPool.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>

#include "support/ThreadPointer.h"

namespace postscript::objectPool {

namespace {

constexpr size_t listCount = listOf(largestPooled) + 1;

constexpr size_t blockSize(size_t list) {
  return list < smallLists ? (list + 1) * smallStep
                           : largestSmall + (list - smallLists + 1) * largeStep;
}

// A block more than this in one list goes straight back to the system.
constexpr auto mostBlocks = [] {
  constexpr size_t blocks = 4096;
  constexpr size_t bytes = size_t{512} << 10;
  std::array<uint32_t, listCount> most{};
  for (size_t list = 0; list < listCount; ++list) {
    most[list] = static_cast<uint32_t>(std::min(blocks, bytes / blockSize(list)));
  }
  return most;
}();

struct Block {
  Block* next;
};

struct List {
  Block* first;
  uint32_t count;
};

// In a shared object the general way to a thread's data is a call; these few bytes are reserved
// when the library is loaded instead.
#ifdef __linux__
[[gnu::tls_model("initial-exec")]]
#endif
constinit thread_local List ownLists[listCount] = {};

#ifdef _WIN32
constinit quillpress::ThreadPointer knownLists;
#endif

struct EmptiesListsWithThread {
  ~EmptiesListsWithThread() {
    releaseUnused();
#ifdef _WIN32
    knownLists.set(nullptr);
#endif
  }
  void touch() {}
};
thread_local EmptiesListsWithThread atThreadEnd;

#ifdef _WIN32
[[gnu::noinline]] List* findLists() {
  atThreadEnd.touch();
  knownLists.set(ownLists);
  return ownLists;
}

List* lists() {
  void* known = knownLists.get();
  return known ? static_cast<List*>(known) : findLists();
}
#else
List* lists() {
  return ownLists;
}
#endif

[[gnu::noinline]] void* allocateAnew(size_t list) {
  atThreadEnd.touch();
  return ::operator new(blockSize(list));
}

}  // namespace

void* takeFrom(size_t index) {
  List& list = lists()[index];
  Block* block = list.first;
  if (!block) {
    return allocateAnew(index);
  }
  list.first = block->next;
  --list.count;
  return block;
}

void giveTo(size_t index, void* block) noexcept {
  List& list = lists()[index];
  if (list.count == mostBlocks[index]) {
    return ::operator delete(block);
  }
  list.first = new (block) Block{list.first};
  ++list.count;
}

void releaseUnused() noexcept {
  for (size_t i = 0; i < listCount; ++i) {
    List& list = lists()[i];
    while (Block* block = list.first) {
      list.first = block->next;
      ::operator delete(block);
    }
    list.count = 0;
  }
}

}  // namespace postscript::objectPool
