#include "postscript/painting/TextBuffer.h"

#include <algorithm>
#include <new>

#include "support/GrowingBlock.h"

namespace postscript {

namespace {
constexpr size_t firstCapacity = 4096;
}

TextBuffer::~TextBuffer() {
  quillpress::growingBlock::free(bytes_, capacity_);
}

void TextBuffer::grow(size_t bytes) {
  if (bytes > static_cast<size_t>(-1) / 4 - size_) {
    throw std::bad_alloc();
  }
  const size_t wanted = std::max({capacity_ * 2, size_ + bytes, firstCapacity});
  share_.resize(wanted);
  void* grown = quillpress::growingBlock::grow(bytes_, capacity_, wanted);
  if (!grown) {
    throw std::bad_alloc();
  }
  bytes_ = static_cast<char*>(grown);
  capacity_ = wanted;
}

}  // namespace postscript
