// NumberToken: what a token's text is as a number, by rules that depend on neither locale nor
// platform. Nearly all numbers of a page are a sign, digits and a point; those take one short pass,
// everything else the rules' own long way.
#pragma once

#include <cstdint>
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

// The text as an integer, else as a real, else neither.
NumberToken readNumber(std::string_view token);

// The text as an integer: a base and its digits as in 16#FF, or digits after an optional sign;
// saturated at 32 bits. Nothing when it is none.
std::optional<int32_t> readInteger(std::string_view token);
// The text as a real: digits, one point, one exponent letter, a sign at the beginning only. A text
// that passes without any digit is 0. Nothing when it is none, or out of range.
std::optional<double> readReal(std::string_view token);

}  // namespace postscript
