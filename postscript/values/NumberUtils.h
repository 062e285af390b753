// NumberUtils: the numbers of objects, and arithmetic with a defined answer for every value.
#pragma once

#include <cstdint>

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

}  // namespace postscript
