// ThreadPointer: a pointer of which each thread has its own, null at first. For Windows only: the
// thread_local of its compiler is a call of some 20 ns, and this is two reads of memory. The system
// keeps the first 64 slots of TlsAlloc in a block that the processor points at (TlsSlots of _TEB in
// winternl.h), where TlsSetValue writes. Nothing is done with the pointer when a thread ends.
//
// There may be none: get gives null when all 64 slots are taken, and after the destructor.
#pragma once

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <winternl.h>

#include <atomic>
#include <iterator>

namespace quillpress {

class ThreadPointer {
 public:
  constexpr ThreadPointer() = default;
  ThreadPointer(const ThreadPointer&) = delete;
  ThreadPointer& operator=(const ThreadPointer&) = delete;
  ~ThreadPointer() {
    const DWORD slot = slot_.exchange(lost);
    if (isQuick(slot)) {
      TlsFree(slot);
    }
  }

  void* get() const {
    const DWORD slot = slot_.load(std::memory_order_relaxed);
    return isQuick(slot) ? NtCurrentTeb()->TlsSlots[slot] : nullptr;
  }
  // False when it cannot be kept.
  bool set(void* pointer) {
    DWORD slot = slot_.load();
    if (slot == notYet) {
      slot = takeSlot();
    }
    return isQuick(slot) && TlsSetValue(slot, pointer);
  }

 private:
  static constexpr DWORD lost = MAXDWORD;
  static constexpr DWORD notYet = MAXDWORD - 1;

  static bool isQuick(DWORD slot) { return slot < std::size(TEB{}.TlsSlots); }
  // The first of several threads wins.
  DWORD takeSlot() {
    const DWORD taken = TlsAlloc();
    const DWORD slot = isQuick(taken) ? taken : lost;
    DWORD before = notYet;
    const bool isFirst = slot_.compare_exchange_strong(before, slot);
    if (taken != TLS_OUT_OF_INDEXES && (!isFirst || slot == lost)) {
      TlsFree(taken);
    }
    return isFirst ? slot : before;
  }

  std::atomic<DWORD> slot_ = notYet;
};

}  // namespace quillpress

#endif
