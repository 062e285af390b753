#include "tools/quillpress/AsciiData.h"

#include <cstddef>
#include <cstdint>

namespace quillpress {
namespace {

constexpr std::string_view whiteSpace("\0\t\n\f\r ", 6);

bool isSpace(char c) {
  return whiteSpace.find(c) != std::string_view::npos;
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') {
    return c - '0';
  }
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// The bytes of a group: one fewer than its digits, of which there are five in a whole one. None if
// the digits are too large for four bytes.
bool appendGroup(std::string& bytes, uint64_t value, size_t digits) {
  for (size_t i = digits; i < 5; ++i) {
    value = value * 85 + 84;
  }
  for (size_t i = 0; i + 1 < digits; ++i) {
    bytes += static_cast<char>(value >> (24 - 8 * i) & 0xFF);
  }
  return digits != 1 && value <= UINT32_MAX;
}

}  // namespace

std::optional<std::string> decodeAsciiHex(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 2);
  int high = -1;
  for (const char c : text.substr(0, text.find('>'))) {
    const int digit = hexDigit(c);
    if (digit < 0 && !isSpace(c)) {
      return std::nullopt;
    }
    if (digit >= 0 && high >= 0) {
      bytes += static_cast<char>(high << 4 | digit);
      high = -1;
    } else if (digit >= 0) {
      high = digit;
    }
  }
  if (high >= 0) {
    bytes += static_cast<char>(high << 4);
  }
  return bytes;
}

std::optional<std::string> decodeAscii85(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 5 * 4);
  if (text.starts_with("<~")) {
    text.remove_prefix(2);
  }
  uint64_t value = 0;
  size_t digits = 0;
  for (const char c : text.substr(0, text.find('~'))) {
    if (c == 'z' && digits == 0) {
      bytes.append(4, '\0');
    } else if (c >= '!' && c <= 'u') {
      value = value * 85 + static_cast<uint64_t>(c - '!');
      if (++digits == 5) {
        if (!appendGroup(bytes, value, digits)) {
          return std::nullopt;
        }
        value = digits = 0;
      }
    } else if (!isSpace(c)) {
      return std::nullopt;
    }
  }
  if (digits > 0 && !appendGroup(bytes, value, digits)) {
    return std::nullopt;
  }
  return bytes;
}

}  // namespace quillpress
