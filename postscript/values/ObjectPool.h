// ObjectPool: memory for objects and bodies. Programs make and drop millions of small ones, most of
// them one after another, so freed blocks are kept in lists by size and handed out again: a pop
// from a list costs a fifth of what the general allocator does.
//
// The lists belong to the thread that frees. A block that one thread took and another frees simply
// changes lists, so no lock is needed. A list holds a bounded number of blocks, and
// releaseUnused gives them back to the system, as does the end of a thread.
#pragma once

#include <cstddef>

namespace postscript::objectPool {

// Throws std::bad_alloc when there is no memory.
void* allocate(size_t size);
// block: from allocate with the same size.
void free(void* block, size_t size) noexcept;
// Gives the unused blocks of this thread back.
void releaseUnused() noexcept;

// A base of classes whose objects come from the pool.
struct Pooled {
  static void* operator new(size_t size) { return allocate(size); }
  static void operator delete(void* block, size_t size) noexcept { objectPool::free(block, size); }
};

}  // namespace postscript::objectPool
