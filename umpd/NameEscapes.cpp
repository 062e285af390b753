// One pass, left to right. A `%` takes the two characters after it, whatever they are; two `%` in a
// row are one character and the start of the next escape.
#include "umpd/NameEscapes.h"

#include <cstddef>

namespace umpd {
namespace {

constexpr int noDigit = -1;

constexpr int hexDigit(char16_t c) {
  if (c >= u'0' && c <= u'9') {
    return c - u'0';
  }
  if (c >= u'A' && c <= u'F') {
    return c - u'A' + 10;
  }
  if (c >= u'a' && c <= u'f') {
    return c - u'a' + 10;
  }
  return noDigit;
}

// The value of the leading hexadecimal digits, 0 without any.
char16_t leadingHexNumber(std::u16string_view digits) {
  int value = 0;
  for (const char16_t c : digits) {
    if (hexDigit(c) == noDigit) {
      break;
    }
    value = value * 16 + hexDigit(c);
  }
  return static_cast<char16_t>(value);
}

}  // namespace

// 192 to 255 are the accented letters of Latin-1, and the signs of multiplication and division,
// which came with them.
bool isAllowedNameChar(char16_t c) {
  constexpr std::u16string_view punctuation = u",()[].$%`-@{}~!#&_^ ";
  return c == 0 || (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') ||
         (c >= u'a' && c <= u'z') || (c >= 192 && c <= 255) ||
         punctuation.find(c) != std::u16string_view::npos;
}

std::u16string decodeNameEscapes(std::u16string_view text) {
  constexpr size_t codeLength = 2;
  std::u16string decoded;
  decoded.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c == u'+') {
      decoded += u' ';
    } else if (c == u'%' && i + 1 < text.size() && text[i + 1] != u'%') {
      const char16_t code = leadingHexNumber(text.substr(i + 1, codeLength));
      // A NUL, which ends a path for the system, ends it here.
      if (code == 0) {
        break;
      }
      decoded += isAllowedNameChar(code) ? code : u'_';
      i += codeLength;
    } else {
      decoded += c;
    }
  }
  return decoded;
}

}  // namespace umpd
