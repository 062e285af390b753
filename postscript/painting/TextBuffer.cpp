#include "postscript/painting/TextBuffer.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace postscript {

namespace {
constexpr size_t firstCapacity = 4096;
}

TextBuffer::~TextBuffer() {
  std::free(bytes_);
}

// By realloc, which moves the pages of a large text instead of its bytes where a system can.
void TextBuffer::grow(size_t bytes) {
  if (bytes > static_cast<size_t>(-1) / 4 - size_) {
    throw std::bad_alloc();
  }
  const size_t wanted = std::max({capacity_ * 2, size_ + bytes, firstCapacity});
  share_.resize(wanted);
  void* grown = std::realloc(bytes_, wanted);
  if (!grown) {
    throw std::bad_alloc();
  }
  bytes_ = static_cast<char*>(grown);
  capacity_ = wanted;
}

}  // namespace postscript
