#include "postscript/painting/ClipPlace.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cstdint>

namespace postscript {

namespace {

bool isSeparator(char c) {
  return c == ' ' || c == '\n' || c == '\r';
}

bool isSegment(char c) {
  return c == 'c' || c == 'l' || c == 'v' || c == 'y';
}

// Whether the byte at the index is the first of a token.
bool beginsToken(std::string_view text, size_t index) {
  return !isSeparator(text[index]) && (index == 0 || isSeparator(text[index - 1]));
}

// A block of a text, and masks with a bit for each of its bytes.
constexpr size_t blockSize = 16;

struct Block {
  explicit Block(const char* at) : bytes(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at))) {}

  // Which bytes are one of these.
  template <class... Chars>
  uint32_t among(Chars... chars) const {
    return (static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(chars)))) |
            ...);
  }

  __m128i bytes;
};

uint32_t separators(const char* at) {
  return Block(at).among(' ', '\n', '\r');
}

}  // namespace

void ClipPlace::note(size_t index, char letter) {
  if (isSegment(letter)) {
    segmentEnd_ = index + 2;
    qEnd_ = 0;
  } else if (letter == 'q' && qEnd_ == 0) {
    qEnd_ = index + 2;
  }
}

// Reads what is not known yet of a block that has a byte before it and one after it. Nearly all of
// a text goes this way.
void ClipPlace::readBlock(std::string_view text, size_t start) {
  const char* at = text.data() + start;
  uint32_t letters = Block(at).among('c', 'l', 'v', 'y', 'q') & ~0U << (readLength_ - start);
  if (letters) {
    letters &= separators(at - 1) & separators(at + 1);
  }
  for (; letters; letters &= letters - 1) {
    const auto index = static_cast<size_t>(std::countr_zero(letters));
    note(start + index, at[index]);
  }
  readLength_ = start + blockSize;
}

// A token of one byte is known as such when the byte after it is there.
void ClipPlace::readByte(std::string_view text) {
  if (beginsToken(text, readLength_) && isSeparator(text[readLength_ + 1])) {
    note(readLength_, text[readLength_]);
  }
  ++readLength_;
}

void ClipPlace::read(std::string_view text) {
  if (text.size() < blockSize + 2) {
    while (readLength_ + 1 < text.size()) {
      readByte(text);
    }
    return;
  }
  if (readLength_ == 0) {
    readByte(text);
  }
  while (readLength_ + blockSize < text.size()) {
    readBlock(text, readLength_);
  }
  readBlock(text, text.size() - 1 - blockSize);
}

std::optional<size_t> ClipPlace::in(std::string_view text) {
  read(text);
  bool sawQ = qEnd_ > 0;
  // A last byte that may yet become part of a longer token counts as it is, for this clip only.
  if (!text.empty() && beginsToken(text, text.size() - 1)) {
    sawQ = text.back() == 'q' || (sawQ && !isSegment(text.back()));
  }
  return sawQ && segmentEnd_ > 0 ? std::optional(segmentEnd_) : std::nullopt;
}

void ClipPlace::keep(size_t length) {
  if (segmentEnd_ > length) {
    *this = {};
    return;
  }
  if (qEnd_ > length) {
    qEnd_ = 0;
  }
  readLength_ = std::min(readLength_, length > 0 ? length - 1 : 0);
}

}  // namespace postscript
