// Blocks are allocated one by one, so that any of them can go back to the system on its own. The
// lists of a thread are emptied when it ends.
#include "postscript/values/ObjectPool.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>

#ifdef _WIN32
#include <pthread.h>

#include "support/ThreadPointer.h"
#endif

namespace postscript::objectPool {

namespace {

constexpr size_t listCount = listOf(largestPooled) + 1;

constexpr size_t blockSize(size_t list) {
  return list < smallLists ? (list + 1) * smallStep
                           : largestSmall + (list - smallLists + 1) * largeStep;
}

// A block more than this in one list goes straight back to the system.
constexpr uint32_t mostBlocks(size_t list) {
  constexpr size_t blocks = 4096;
  constexpr size_t bytes = size_t{512} << 10;
  return static_cast<uint32_t>(std::min(blocks, bytes / blockSize(list)));
}

struct Block {
  Block* next;
};

struct List {
  Block* first;
  uint32_t room;  // for so many further blocks
};
using Lists = std::array<List, listCount>;

constexpr Lists emptyLists = [] {
  Lists lists{};
  for (size_t i = 0; i < listCount; ++i) {
    lists[i].room = mostBlocks(i);
  }
  return lists;
}();

void empty(Lists& lists) noexcept {
  for (List& list : lists) {
    while (Block* block = list.first) {
      list.first = block->next;
      ++list.room;
      ::operator delete(block);
    }
  }
}

#ifdef _WIN32

// For a thread that can have none: nothing is ever taken from them or added.
constinit Lists noLists = {};

constinit quillpress::ThreadPointer known;

// The compiler's thread_local will not do: when its destructors run the memory is gone already.
struct ListsOfThreads {
  ListsOfThreads() { isMade = pthread_key_create(&key, end) == 0; }
  // The library is unloaded: the lists of the thread that does it go.
  ~ListsOfThreads() {
    isMade = false;
    if (void* lists = pthread_getspecific(key)) {
      pthread_setspecific(key, nullptr);
      end(lists);
    }
  }
  static void end(void* lists) {
    known.set(&noLists);
    empty(*static_cast<Lists*>(lists));
    delete static_cast<Lists*>(lists);
  }

  pthread_key_t key;
  bool isMade;
} ofThreads;

[[gnu::noinline]] Lists& makeLists() {
  if (!ofThreads.isMade || !known.set(&noLists)) {
    return noLists;
  }
  auto* lists = new (std::nothrow) Lists(emptyLists);
  if (!lists || pthread_setspecific(ofThreads.key, lists) != 0) {
    delete lists;
    return noLists;
  }
  known.set(lists);
  return *lists;
}

Lists& lists() {
  void* ofThread = known.get();
  return ofThread ? *static_cast<Lists*>(ofThread) : makeLists();
}

// These have room from the beginning, or never.
bool openLists() {
  return false;
}

#else

// Plain data without a constructor, which keeps access to the thread's copy cheap. In a shared
// object the general way to it is a call; these few bytes are reserved when the library is loaded
// instead. They have no room before the first block is given, nor after the thread's end.
#ifdef __linux__
[[gnu::tls_model("initial-exec")]]
#endif
constinit thread_local Lists ownLists = {};

Lists& lists() {
  return ownLists;
}

enum class Stage { notYet, open, ended };
constinit thread_local Stage stage = Stage::notYet;

struct EmptiesListsWithThread {
  ~EmptiesListsWithThread() {
    empty(ownLists);
    ownLists = {};
    stage = Stage::ended;
  }
};

// When a list has no room: whether that was only as none had any yet.
[[gnu::noinline]] bool openLists() {
  if (stage != Stage::notYet) {
    return false;
  }
  stage = Stage::open;
  ownLists = emptyLists;
  thread_local EmptiesListsWithThread untilThreadEnd;
  return true;
}

#endif

}  // namespace

void* takeFrom(size_t index) {
  List& list = lists()[index];
  Block* block = list.first;
  if (!block) {
    return ::operator new(blockSize(index));
  }
  list.first = block->next;
  ++list.room;
  return block;
}

void giveTo(size_t index, void* block) noexcept {
  List& list = lists()[index];
  if (list.room == 0 && !openLists()) {
    return ::operator delete(block);
  }
  list.first = new (block) Block{list.first};
  --list.room;
}

void releaseUnused() noexcept {
  empty(lists());
}

}  // namespace postscript::objectPool
