#include "postscript/values/NumberToken.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace postscript {

namespace {

bool isSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// 36 for no digit of any base.
int digitValue(char c) {
  if (detail::isDigit(c)) {
    return c - '0';
  }
  if (c >= 'a' && c <= 'z') {
    return c - 'a' + 10;
  }
  if (c >= 'A' && c <= 'Z') {
    return c - 'A' + 10;
  }
  return 36;
}

// The C library's strtol for 32 bits, as a rule of its own so that every platform's gives the same:
// white space, a sign, "0x" in the bases 0 and 16, octal for a leading 0 in base 0; saturates.
// Gives nothing unless the whole text was used.
std::optional<int32_t> wholeNumber(std::string_view text, int base) {
  if (base == 1 || base > 36) {
    return std::nullopt;
  }
  size_t at = 0;
  while (at < text.size() && isSpace(text[at])) {
    ++at;
  }
  const bool negative = at < text.size() && text[at] == '-';
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) {
    ++at;
  }
  const bool zeroFirst = at < text.size() && text[at] == '0';
  const bool hexadecimal = zeroFirst && at + 2 < text.size() &&
                           (text[at + 1] == 'x' || text[at + 1] == 'X') &&
                           digitValue(text[at + 2]) < 16;
  if ((base == 0 || base == 16) && hexadecimal) {
    base = 16;
    at += 2;
  } else if (base == 0) {
    base = zeroFirst ? 8 : 10;
  }
  const size_t digits = at;
  int64_t value = 0;
  for (; at < text.size() && digitValue(text[at]) < base; ++at) {
    value = std::min(value * base + digitValue(text[at]), int64_t{1} << 40);
  }
  if (at == digits || at < text.size()) {
    return std::nullopt;
  }
  return detail::saturated(negative ? -value : value);
}

std::optional<int32_t> readRadix(std::string_view token) {
  if (token.size() > 2 && token[1] == '#' && detail::isDigit(token[0])) {
    if (auto number = wholeNumber(token.substr(2), token[0] - '0')) {
      return number;
    }
  }
  if (token.size() > 3 && token[2] == '#' && detail::isDigit(token[0]) &&
      detail::isDigit(token[1])) {
    return wholeNumber(token.substr(3), (token[0] - '0') * 10 + (token[1] - '0'));
  }
  return std::nullopt;
}

bool hasRealForm(std::string_view token) {
  int exponents = 0;
  int points = 0;
  for (size_t i = 0; i < token.size(); ++i) {
    const char c = token[i];
    if (detail::isDigit(c)) {
      continue;
    }
    const bool sign = i == 0 && (c == '+' || c == '-');
    const bool exponent = (c == 'e' || c == 'E') && exponents++ == 0;
    const bool point = c == '.' && points++ == 0;
    if (!sign && !exponent && !point) {
      return false;
    }
  }
  return true;
}

// Whether the digits in front of an exponent hold more than zeros.
bool hasNonzeroDigit(std::string_view token) {
  return token.substr(0, token.find_first_of("eE")).find_first_of("123456789") !=
         std::string_view::npos;
}

// The whole text in the form that nearly all numbers have; none for any other text, which may be a
// number all the same.
NumberToken wholeDecimal(std::string_view token) {
  const char* const end = token.data() + token.size();
  NumberToken number;
  return readPlainDecimal(token.data(), end, number) == end ? number : NumberToken();
}

}  // namespace

std::optional<int32_t> readInteger(std::string_view token) {
  if (auto number = readRadix(token)) {
    return number;
  }
  if (token.empty()) {
    return std::nullopt;
  }
  const bool sign = token[0] == '-' || token[0] == '+';
  for (size_t i = sign ? 1 : 0; i < token.size(); ++i) {
    if (!detail::isDigit(token[i])) {
      return std::nullopt;
    }
  }
  // A lone sign is 0.
  return token.size() == 1 && sign ? 0 : wholeNumber(token, 10);
}

std::optional<double> readReal(std::string_view token) {
  if (!hasRealForm(token)) {
    return std::nullopt;
  }
  const bool negative = !token.empty() && token[0] == '-';
  if (!token.empty() && (token[0] == '-' || token[0] == '+')) {
    token.remove_prefix(1);
  }
  double value = 0;
  const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), value);
  if (error == std::errc::invalid_argument) {
    return 0.0;
  }
  const bool outOfRange = error == std::errc::result_out_of_range || std::isinf(value) ||
                          (value < std::numeric_limits<double>::min() && hasNonzeroDigit(token));
  if (outOfRange) {
    return std::nullopt;
  }
  return negative ? -value : value;
}

NumberToken readNumber(std::string_view token) {
  if (!token.empty() && !mayBeginNumber(token[0])) {
    return {};
  }
  if (const NumberToken number = wholeDecimal(token)) {
    return number;
  }
  if (const auto integer = readInteger(token)) {
    return NumberToken::ofInteger(*integer);
  }
  if (const auto real = readReal(token)) {
    return NumberToken::ofReal(*real);
  }
  return {};
}

}  // namespace postscript
