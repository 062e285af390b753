// Blocks are allocated one by one, so that any of them can go back to the system on its own. The
// lists are plain data without a constructor, which keeps access to the thread's copy cheap; a
// second object with a destructor, touched when a list is empty, empties them when the thread ends.
// A build with a sanitizer uses the general allocator alone, so that every misuse is seen.
#include "postscript/values/ObjectPool.h"

#include <cstdint>
#include <new>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define POSTSCRIPT_PLAIN_ALLOCATION 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define POSTSCRIPT_PLAIN_ALLOCATION 1
#endif
#endif

namespace postscript::objectPool {

#ifdef POSTSCRIPT_PLAIN_ALLOCATION

void* allocate(size_t size) {
  return ::operator new(size);
}

void free(void* block, size_t) noexcept {
  ::operator delete(block);
}

void releaseUnused() noexcept {}

#else

namespace {

constexpr size_t granularity = 16;
constexpr size_t largestPooled = 256;
constexpr size_t listCount = largestPooled / granularity;
// A block more than this of one size goes straight back to the system.
constexpr uint32_t blocksInList = 4096;

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
constinit thread_local List lists[listCount] = {};

struct EmptiesListsWithThread {
  ~EmptiesListsWithThread() { releaseUnused(); }
  void touch() {}
};
thread_local EmptiesListsWithThread atThreadEnd;

// Sizes are rounded up: 1 to 16 bytes use the first list.
size_t listIndex(size_t size) {
  return (size - 1) / granularity;
}

[[gnu::noinline]] void* allocateAnew(size_t size) {
  atThreadEnd.touch();
  return ::operator new((size + granularity - 1) / granularity * granularity);
}

}  // namespace

void* allocate(size_t size) {
  if (size > largestPooled) {
    return ::operator new(size);
  }
  List& list = lists[listIndex(size)];
  Block* block = list.first;
  if (!block) {
    return allocateAnew(size);
  }
  list.first = block->next;
  --list.count;
  return block;
}

void free(void* block, size_t size) noexcept {
  if (size > largestPooled) {
    return ::operator delete(block);
  }
  List& list = lists[listIndex(size)];
  if (list.count == blocksInList) {
    return ::operator delete(block);
  }
  list.first = new (block) Block{list.first};
  ++list.count;
}

void releaseUnused() noexcept {
  for (List& list : lists) {
    while (Block* block = list.first) {
      list.first = block->next;
      ::operator delete(block);
    }
    list.count = 0;
  }
}

#endif

}  // namespace postscript::objectPool
