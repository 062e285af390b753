#include "postscript/painting/ContentWriter.h"

#include <algorithm>

namespace postscript {

size_t roomForMatrix(std::string_view word) {
  return 6 * (mostNumberText + 1) + word.size() + 1;
}

// A matrix that maps all to one point is not written: nothing would be seen behind it.
char* formatMatrix(char* at, const Matrix& m, std::string_view word) {
  const double linear[] = {m.a, m.b, m.c, m.d};
  const auto flat = [](double value) { return value > -0.0001 && value < 0.0001; };
  if (std::all_of(std::begin(linear), std::end(linear), flat)) {
    return at;
  }
  for (const double number : {m.a, m.b, m.c, m.d, m.e, m.f}) {
    at = formatNumber(at, number);
    *at++ = ' ';
  }
  return writePart(writePart(at, word), "\n");
}

void formatMatrix(std::string& text, const Matrix& matrix, std::string_view word) {
  const size_t size = text.size();
  text.resize(size + roomForMatrix(word));
  text.resize(static_cast<size_t>(formatMatrix(text.data() + size, matrix, word) - text.data()));
}

}  // namespace postscript
