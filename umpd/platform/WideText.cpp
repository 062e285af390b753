// No call of the system or of the C library takes part: both would look at the locale, and settings
// must mean the same wherever they are read.
#include "umpd/platform/WideText.h"

#include <algorithm>

namespace umpd {
namespace {

char16_t fold(char16_t c) {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

bool isDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

// What the C library skips before a number in the plain locale.
bool isSpace(char16_t c) {
  return c == u' ' || (c >= u'\t' && c <= u'\r');
}

}  // namespace

std::u16string foldCase(std::u16string_view text) {
  std::u16string folded(text);
  std::transform(folded.begin(), folded.end(), folded.begin(), fold);
  return folded;
}

bool equalsIgnoringCase(std::u16string_view a, std::u16string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return fold(x) == fold(y); });
}

// For whole numbers std::to_string does not look at the locale.
std::u16string decimalText(uint32_t value) {
  const std::string digits = std::to_string(value);
  return {digits.begin(), digits.end()};
}

// Overflow wraps, as unsigned arithmetic does.
uint32_t decimalValue(std::u16string_view text) {
  auto at = std::find_if_not(text.begin(), text.end(), isSpace);
  bool negative = false;
  if (at != text.end() && (*at == u'-' || *at == u'+')) {
    negative = *at++ == u'-';
  }
  uint32_t value = 0;
  for (; at != text.end() && isDigit(*at); ++at) {
    value = value * 10 + static_cast<uint32_t>(*at - u'0');
  }
  return negative ? 0 - value : value;
}

std::u16string withCommas(std::u16string_view name) {
  std::u16string result(name);
  std::replace(result.begin(), result.end(), u'\\', u',');
  return result;
}

}  // namespace umpd
