// ProcessUse: what this process has in use. Wine counts neither handles nor memory for those who
// ask, so it is counted here.
#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

namespace umpd {

// The system gives out the lowest numbers that are free: a new handle's tells of handles that were
// not given back.
inline size_t nextHandleNumber() {
  const HANDLE handle = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  CloseHandle(handle);
  return reinterpret_cast<size_t>(handle) / 4;
}

inline size_t heapBlocks() {
  std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
  heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
  size_t blocks = 0;
  for (const HANDLE heap : heaps) {
    HeapLock(heap);
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry)) {
      blocks += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
    }
    HeapUnlock(heap);
  }
  return blocks;
}

// Regions below 4 GiB that are in use: job records lie there, each in one of its own.
inline size_t lowRegions() {
  size_t regions = 0;
  MEMORY_BASIC_INFORMATION region{};
  for (size_t at = 0; at < size_t{1} << 32; at += region.RegionSize) {
    if (!VirtualQuery(reinterpret_cast<void*>(at), &region, sizeof region)) {
      break;
    }
    regions += region.State == MEM_COMMIT && region.Type == MEM_PRIVATE;
  }
  return regions;
}

}  // namespace umpd
