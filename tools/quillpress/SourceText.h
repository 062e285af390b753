// SourceText: places in a program's text, as people name them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillpress {

struct SourcePlace {
  size_t line = 1;
  size_t column = 1;
};

class SourceText {
 public:
  explicit SourceText(std::string_view text) : text_(text) {}

  std::string_view text() const { return text_; }

  // Lines end in a line feed, a carriage return or both. Quick for offsets that grow.
  SourcePlace placeOf(size_t offset);

  // The token that ends at the offset or before the white space in front of it.
  std::string_view tokenBefore(size_t offset) const;

  // The line of the offset, without white space around it.
  std::string_view lineOf(size_t offset) const;

 private:
  std::string_view text_;
  size_t knownLine_ = 1;
  size_t knownStart_ = 0;  // of that line
};

// At most so many characters; a byte that is no printable ASCII appears as \xNN.
std::string printable(std::string_view text, size_t limit = 60);

// Where the piece of a program that starts at `begin` ends: after a line, or after the line in
// which a string that it opens is closed.
size_t endOfPiece(std::string_view program, size_t begin);

}  // namespace quillpress
