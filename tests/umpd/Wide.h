// Tests write their texts narrow and see differences narrow: a byte is the character of that code.
#pragma once

#include <string>
#include <string_view>

namespace umpd {

inline std::u16string wide(std::string_view text) {
  std::u16string result;
  for (const char c : text) {
    result += static_cast<unsigned char>(c);
  }
  return result;
}

// A character that no byte can be shows as `?`.
inline std::string narrow(std::u16string_view text) {
  std::string result;
  for (const char16_t c : text) {
    result += c < 256 ? static_cast<char>(c) : '?';
  }
  return result;
}

}  // namespace umpd
