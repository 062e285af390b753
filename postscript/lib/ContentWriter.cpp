#include "postscript/lib/ContentWriter.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "postscript/lib/NumberUtils.h"

namespace postscript {

namespace {

int decimalsFor(double magnitude) {
  if (magnitude >= 1000) return 1;
  if (magnitude >= 10) return 3;
  return magnitude >= 1 ? 4 : 5;
}

bool isSeparator(char c) {
  return c == ' ' || c == '\n' || c == '\r';
}

bool isSegment(std::string_view token) {
  return token == "c" || token == "l" || token == "v" || token == "y";
}

// Where the clip belongs: behind the last segment when a "q" follows it, else the end.
size_t placeOfClip(std::string_view content) {
  bool sawQ = false;
  size_t end = content.size();
  for (;;) {
    while (end > 0 && isSeparator(content[end - 1])) --end;
    if (end == 0) return content.size();
    size_t start = end;
    while (start > 0 && !isSeparator(content[start - 1])) --start;
    const std::string_view token = content.substr(start, end - start);
    if (token == "q") {
      sawQ = true;
    } else if (isSegment(token)) {
      // Two bytes behind the letter: the writers end a segment's line there.
      return sawQ ? std::min(start + 2, content.size()) : content.size();
    }
    end = start;
  }
}

}  // namespace

void formatNumber(std::string& text, double value) {
  const double magnitude = std::fabs(value);
  if (magnitude < 10000 && std::trunc(value) == value) {
    char digits[8];
    const auto end = std::to_chars(digits, digits + sizeof digits, static_cast<int32_t>(value)).ptr;
    text.append(digits, end);
    return;
  }
  const size_t start = text.size();
  if (magnitude >= 10000) return appendFixed(text, value, 0);
  appendFixed(text, value, decimalsFor(magnitude));
  size_t end = text.size();
  while (end > start + 1 && text[end - 1] == '0') --end;
  if (text[end - 1] == '.') --end;
  text.resize(end);
  if (text.compare(start, std::string::npos, "-0") == 0) text.erase(start, 1);
}

void formatMatrix(std::string& text, const Matrix& matrix, std::string_view word) {
  const auto flat = [](double value) { return value > -0.0001 && value < 0.0001; };
  if (flat(matrix.a) && flat(matrix.d) && flat(matrix.b) && flat(matrix.c)) return;
  for (const double number : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
    formatNumber(text, number);
    text += ' ';
  }
  text.append(word).append("\n");
}

void insertClip(std::string& content, std::string_view clip) {
  content.insert(placeOfClip(content), clip);
}

}  // namespace postscript
