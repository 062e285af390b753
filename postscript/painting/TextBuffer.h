// TextBuffer: bytes that grow at their end. A writer asks once for room for all that it may write
// and fills that without further tests. The memory doubles when it is used up, is not cleared
// before it is written, and stays when the text goes.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include "postscript/values/Budget.h"

namespace postscript {

class TextBuffer {
 public:
  explicit TextBuffer(Budget* budget) : share_(budget) {}
  TextBuffer(const TextBuffer&) = delete;
  TextBuffer& operator=(const TextBuffer&) = delete;
  ~TextBuffer();

  const char* data() const { return bytes_; }
  char* data() { return bytes_; }
  size_t size() const { return size_; }

  // The end of the text, with room for so many bytes.
  char* room(size_t bytes) {
    if (capacity_ - size_ < bytes) [[unlikely]] {
      grow(bytes);
    }
    return bytes_ + size_;
  }
  // The text ends here: at a place of what `room` returned.
  void endAt(const char* end) { size_ = static_cast<size_t>(end - bytes_); }

  void append(std::string_view text) {
    char* end = room(text.size());
    std::memcpy(end, text.data(), text.size());
    size_ += text.size();
  }
  // Keeps the beginning only.
  void cut(size_t size) { size_ = size; }

 private:
  void grow(size_t bytes);

  char* bytes_ = nullptr;
  size_t size_ = 0;
  size_t capacity_ = 0;
  BudgetShare share_;
};

}  // namespace postscript
