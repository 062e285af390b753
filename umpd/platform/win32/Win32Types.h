// The bridge between the seam's types and the system's, for the sources of this folder alone.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string>

#include "umpd/platform/Platform.h"

namespace umpd {

// The system's UTF-16 text. Only the type changes.
inline const wchar_t* wide(const std::u16string& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

inline std::u16string text(const wchar_t* characters, size_t length) {
  return {characters, characters + length};
}

inline std::u16string text(const wchar_t* terminated) {
  return text(terminated, std::char_traits<wchar_t>::length(terminated));
}

// From the default code page.
std::u16string widened(const char* narrow, size_t length);
std::optional<std::u16string> widenedIfAny(const char* narrow);

// The system's handle for one of the seam's, and back.
template <class System, class Handle>
System as(Handle handle) {
  return reinterpret_cast<System>(static_cast<uintptr_t>(handle));
}

template <class Handle, class System>
Handle from(System handle) {
  return Handle{reinterpret_cast<uintptr_t>(handle)};
}

// Closing something must not hide why the call before it failed.
class KeptLastError {
 public:
  KeptLastError() : error_(GetLastError()) {}
  ~KeptLastError() { SetLastError(error_); }
  KeptLastError(const KeptLastError&) = delete;
  KeptLastError& operator=(const KeptLastError&) = delete;

 private:
  DWORD error_;
};

// Room for one record of the spooler at least, with the texts after it. A lack of memory becomes
// the last error.
template <class Record>
class RecordBuffer {
 public:
  explicit RecordBuffer(DWORD size)
      : size_(std::max<size_t>(size, sizeof(Record))),
        storage_(size_ > largestAnswer ? nullptr : new (std::nothrow) BYTE[size_]()) {
    if (!storage_) {
      SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    }
  }
  explicit operator bool() const { return storage_ != nullptr; }
  BYTE* bytes() { return storage_.get(); }
  // As many as are said to be there, if the buffer has room for them.
  std::span<const Record> records(DWORD count) const {
    return {records(), std::min<size_t>(count, size_ / sizeof(Record))};
  }
  const Record* records() const { return reinterpret_cast<const Record*>(storage_.get()); }

 private:
  // Beyond this a size is no answer that a spooler would give.
  static constexpr size_t largestAnswer = size_t{256} << 20;

  size_t size_;
  std::unique_ptr<BYTE[]> storage_;
};

}  // namespace umpd
