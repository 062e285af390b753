// ObjectPool: memory for objects and bodies. Programs make and drop millions of small ones, most of
// them one after another, so freed blocks are kept in lists by size and handed out again: a pop
// from a list costs a fifth of what the general allocator does.
//
// The lists belong to the thread that frees. A block that one thread took and another frees simply
// changes lists, so no lock is needed. A list holds a bounded number of blocks, and
// releaseUnused gives them back to the system, as does the end of a thread.
//
// Texts and vectors that come and go with objects take their memory here as well, through
// Allocator. The general allocator of Windows takes ten times as long as that of Linux, so that
// what a page makes and drops by the million must not ask it each time.
#pragma once

#include <cstddef>
#include <limits>
#include <new>

// A build with a sanitizer uses the general allocator alone, so that every misuse is seen.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define POSTSCRIPT_PLAIN_ALLOCATION 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define POSTSCRIPT_PLAIN_ALLOCATION 1
#endif
#endif

namespace postscript::objectPool {

#ifdef POSTSCRIPT_PLAIN_ALLOCATION
inline constexpr bool usesLists = false;
#else
inline constexpr bool usesLists = true;
#endif

// Small blocks differ by 16 bytes from list to list, larger ones by 128.
inline constexpr size_t smallStep = 16;
inline constexpr size_t largestSmall = 256;
inline constexpr size_t smallLists = largestSmall / smallStep;
inline constexpr size_t largeStep = 128;
inline constexpr size_t largestPooled = 1024;

// 1 to 16 bytes use the first list, 257 to 384 the first of the larger ones.
constexpr size_t listOf(size_t size) {
  return size <= largestSmall ? (size - 1) / smallStep
                              : smallLists + (size - largestSmall - 1) / largeStep;
}

// A block of a list's size, and back to it.
void* takeFrom(size_t list);
void giveTo(size_t list, void* block) noexcept;

// size: at least 1. Throws std::bad_alloc when there is no memory.
inline void* allocate(size_t size) {
  if (usesLists && size <= largestPooled) {
    return takeFrom(listOf(size));
  }
  return ::operator new(size);
}
// block: from allocate with the same size.
inline void free(void* block, size_t size) noexcept {
  if (usesLists && size <= largestPooled) {
    giveTo(listOf(size), block);
  } else {
    ::operator delete(block);
  }
}
// Gives the unused blocks of this thread back.
void releaseUnused() noexcept;

// A base of classes whose objects come from the pool.
struct Pooled {
  static void* operator new(size_t size) { return allocate(size); }
  static void operator delete(void* block, size_t size) noexcept { objectPool::free(block, size); }
};

// For containers of the standard library, which asks for the name of the type.
template <class T>
struct Allocator {
  using value_type = T;  // NOLINT(readability-identifier-naming)

  Allocator() = default;
  template <class U>
  Allocator(const Allocator<U>&) noexcept {}

  T* allocate(size_t count) {
    if (count > std::numeric_limits<size_t>::max() / bytesOfOne) {
      throw std::bad_array_new_length();
    }
    return static_cast<T*>(objectPool::allocate(bytesOf(count)));
  }
  void deallocate(T* block, size_t count) noexcept { objectPool::free(block, bytesOf(count)); }

  bool operator==(const Allocator&) const = default;

 private:
  // T may well be a pointer.
  static size_t bytesOf(size_t count) { return count == 0 ? 1 : count * bytesOfOne; }
  static constexpr size_t bytesOfOne = sizeof(T);  // NOLINT(bugprone-sizeof-expression)
};

}  // namespace postscript::objectPool
