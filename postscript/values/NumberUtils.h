// NumberUtils: numbers out of objects and texts, and into texts, by rules that hang on neither
// locale nor platform.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "postscript/values/PostscriptObject.h"

namespace postscript {

// Pi and two pi, in all arithmetic on angles.
inline constexpr double pi = 3.1415926535;
inline constexpr double twoPi = 6.283185307;

// The value of an integer or a real. Fails for anything else.
double numberValue(const PostscriptObject& object);

// Truncates toward zero; -2147483648 for what does not fit and for not-a-number.
int32_t toInt32(double value);
int32_t wrappingAdd(int32_t a, int32_t b);
int32_t wrappingSubtract(int32_t a, int32_t b);
int32_t wrappingMultiply(int32_t a, int32_t b);

// A token's text as an integer: 16#FF, then digits behind an optional sign, saturated at 32 bits.
// Nothing when it is none.
std::optional<int32_t> readInteger(std::string_view token);
// A token's text as a real: digits, one point, one exponent letter, a sign in front only. A text
// that passes without any digit is 0. Nothing when it is none, or out of range.
std::optional<double> readReal(std::string_view token);

// Appends the exact decimal value, rounded to so many decimals with ties to even, as "%.Nf" does;
// "inf", "-inf" and "nan".
void appendFixed(std::string& text, double value, int decimals);

}  // namespace postscript
