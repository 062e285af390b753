// NumberToken: what a token's text is as a number, by rules that depend on neither locale nor
// platform. Nearly all numbers of a page are a sign, digits and a point; those take one short pass,
// everything else the rules' own long way.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace postscript {

struct NumberToken {
  enum class Kind : uint8_t { none, integer, real };

  static constexpr NumberToken ofInteger(int32_t value) { return {Kind::integer, value, 0}; }
  static constexpr NumberToken ofReal(double value) { return {Kind::real, 0, value}; }

  explicit operator bool() const { return kind != Kind::none; }

  Kind kind = Kind::none;
  int32_t integer = 0;  // of an integer
  double real = 0;      // of a real
};

namespace detail {

inline constexpr size_t mostDigits = 15;
// Those that matter here are exact doubles, as are all integers of 15 digits.
inline constexpr double powersOfTen[mostDigits + 1] = {
    1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr int32_t saturated(int64_t value) {
  using Limits = std::numeric_limits<int32_t>;
  return static_cast<int32_t>(std::clamp<int64_t>(value, Limits::min(), Limits::max()));
}

}  // namespace detail

// Whether a number can begin so. Most names are told apart by it before anything else is tried.
constexpr bool mayBeginNumber(char c) {
  return detail::isDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

// Reads as far as a text has the form of nearly all numbers: a sign, digits, a point, with at most
// 15 digits in all. Returns the place after it, and the number, none when the form is not met.
//
// The digits are read as an integer and divided by a power of ten: both are exact, so the one
// rounding of the division gives the nearest double, as the long way does.
inline const char* readPlainDecimal(const char* at, const char* end, NumberToken& number) {
  const bool negative = at != end && *at == '-';
  if (negative || (at != end && *at == '+')) {
    ++at;
  }
  const char* first = at;
  uint64_t value = 0;  // wraps where there are too many digits
  const auto readDigits = [&] {
    const char* const limit = end - at > 17 ? at + 17 : end;
    for (; at != limit && detail::isDigit(*at); ++at) {
      value = value * 10 + static_cast<unsigned>(*at - '0');
    }
  };
  readDigits();
  auto digits = static_cast<size_t>(at - first);
  size_t decimals = 0;
  const bool real = digits <= detail::mostDigits && at != end && *at == '.';
  if (real) {
    first = ++at;
    readDigits();
    decimals = static_cast<size_t>(at - first);
    digits += decimals;
  }
  if (digits < 1 || digits > detail::mostDigits) {
    number = {};
  } else if (!real) {
    const auto size = static_cast<int64_t>(value);
    number = NumberToken::ofInteger(detail::saturated(negative ? -size : size));
  } else {
    const double size =
        static_cast<double>(static_cast<int64_t>(value)) / detail::powersOfTen[decimals];
    number = NumberToken::ofReal(negative ? -size : size);
  }
  return at;
}

// The text as an integer, else as a real, else neither.
NumberToken readNumber(std::string_view token);

// The text as an integer: a base and its digits as in 16#FF, or digits after an optional sign;
// saturated at 32 bits. Nothing when it is none.
std::optional<int32_t> readInteger(std::string_view token);
// The text as a real: digits, one point, one exponent letter, a sign at the beginning only. A text
// that passes without any digit is 0. Nothing when it is none, or out of range.
std::optional<double> readReal(std::string_view token);

}  // namespace postscript
