#include "postscript/painting/ContentWriter.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "postscript/values/NumberText.h"

namespace postscript {

namespace {

int decimalsFor(double magnitude) {
  if (magnitude >= 1000) {
    return 1;
  }
  if (magnitude >= 10) {
    return 3;
  }
  return magnitude >= 1 ? 4 : 5;
}

constexpr std::string_view separators = " \n\r";

bool isSegment(std::string_view token) {
  return token == "c" || token == "l" || token == "v" || token == "y";
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
  if (magnitude >= 10000) {
    return appendFixed(text, value, 0);
  }
  appendFixed(text, value, decimalsFor(magnitude));
  size_t end = text.size();
  while (end > start + 1 && text[end - 1] == '0') {
    --end;
  }
  if (text[end - 1] == '.') {
    --end;
  }
  text.resize(end);
  if (text.compare(start, std::string::npos, "-0") == 0) {
    text.erase(start, 1);
  }
}

void formatMatrix(std::string& text, const Matrix& matrix, std::string_view word) {
  const auto flat = [](double value) { return value > -0.0001 && value < 0.0001; };
  if (flat(matrix.a) && flat(matrix.d) && flat(matrix.b) && flat(matrix.c)) {
    return;
  }
  for (const double number : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
    formatNumber(text, number);
    text += ' ';
  }
  text.append(word).append("\n");
}

void ClipWriter::insert(std::string& content, std::string_view clip) {
  read(content);
  // A cut text may end in half a token, to which the next text is joined.
  const bool torn = !content.empty() && separators.find(content.back()) == std::string_view::npos;
  if (sawQ && segmentPlace > 0) {
    content.insert(segmentPlace, clip);
    readLength += clip.size();
  } else {
    content.append(clip);
  }
  if (torn) {
    textWasCut();
  }
}

void ClipWriter::read(std::string_view content) {
  size_t start;
  while ((start = content.find_first_not_of(separators, readLength)) != std::string_view::npos) {
    readLength = std::min(content.find_first_of(separators, start), content.size());
    const std::string_view token = content.substr(start, readLength - start);
    if (token == "q") {
      sawQ = true;
    } else if (isSegment(token)) {
      // Two bytes behind the letter: the writers end a segment's line there.
      segmentPlace = start + 2;
      sawQ = false;
    }
  }
  readLength = content.size();
}

}  // namespace postscript
