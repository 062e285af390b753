// ContentWriter: how numbers, texts and matrices become PDF text.
#pragma once

#include <cstring>
#include <string>
#include <string_view>

#include "postscript/values/Matrix.h"
#include "postscript/values/NumberText.h"

namespace postscript {

// Parts of a text: a number, a text or a literal each. How much room one takes at most, and its
// writer, which returns where the part ends.
inline size_t roomFor(double) {
  return mostNumberText;
}
inline size_t roomFor(std::string_view text) {
  return text.size();
}
template <size_t size>
constexpr size_t roomFor(const char (&)[size]) {
  return size - 1;
}
inline char* writePart(char* at, double number) {
  return formatNumber(at, number);
}
inline char* writePart(char* at, std::string_view text) {
  std::memcpy(at, text.data(), text.size());
  return at + text.size();
}
template <size_t size>
char* writePart(char* at, const char (&literal)[size]) {
  std::memcpy(at, literal, size - 1);
  return at + size - 1;
}

// Writes parts in the order given, into a text that has `room` and `endAt` as TextBuffer has them.
template <class Text, class... Parts>
void writeParts(Text& text, const Parts&... parts) {
  char* at = text.room((roomFor(parts) + ...));
  ((at = writePart(at, parts)), ...);
  text.endAt(at);
}

// Writes the six numbers, each followed by a blank, the word and a line feed; nothing for a matrix
// that flattens everything to a point.
size_t roomForMatrix(std::string_view word);
char* formatMatrix(char* at, const Matrix& matrix, std::string_view word);
// The same, at the end of a text.
void formatMatrix(std::string& text, const Matrix& matrix, std::string_view word);

}  // namespace postscript
