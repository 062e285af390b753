// How a number of a content text is written fast: its magnitude is multiplied by a power of ten and
// rounded to an integer, whose digits are the text. One multiplication rounds once, so the product
// can be wrong by less than its last bit. That matters only where it lies exactly between two
// integers: there the sign of its error decides. Everything else (10,000 and above, infinities) is
// left to std::to_chars, which is exact and five times slower.
#include "postscript/values/NumberText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace postscript {

namespace {

// The decimals by magnitude: below 1, 10, 1,000 and 10,000.
struct Precision {
  int decimals;
  double scale;   // ten to the power of the decimals
  uint32_t unit;  // hundred-thousandths in the last decimal
};
constexpr Precision precisions[] = {{5, 1e5, 1}, {4, 1e4, 10}, {3, 1e3, 100}, {1, 1e1, 10000}};

const Precision& precisionFor(double magnitude) {
  return precisions[(magnitude >= 1) + (magnitude >= 10) + (magnitude >= 1000)];
}

// From here on a number may round to five digits before the point.
constexpr double fastLimit = 9999.5;

// Below this a double has a fraction that an integer of 64 bits can be rounded by.
constexpr double wholeLimit = 9007199254740992.0;

// What is missing from a product that was rounded to a double. The number is split into two halves
// of 26 bits, so that each half's product with the scale, which has 17 bits at most, is exact.
double productError(double number, double scale, double product) {
  const double spread = number * 134217729.0;  // 2^27 + 1
  const double high = spread - (spread - number);
  const double low = number - high;
  return (high * scale - product) + low * scale;
}

// The exact product's nearest integer, ties to even.
uint32_t roundedProduct(double number, double scale) {
  const double product = number * scale;
  const auto whole = static_cast<uint32_t>(static_cast<int64_t>(product));
  const double fraction = product - whole;
  if (fraction == 0.5) [[unlikely]] {
    const double error = productError(number, scale, product);
    return whole + (error > 0 || (error == 0 && whole % 2 == 1));
  }
  return whole + (fraction > 0.5);
}

// The two digits of 0 to 99, the first in the low byte.
constexpr auto digitPairs = [] {
  std::array<uint16_t, 100> pairs{};
  for (unsigned i = 0; i < pairs.size(); ++i) {
    pairs[i] = static_cast<uint16_t>(('0' + i / 10) | ('0' + i % 10) << 8);
  }
  return pairs;
}();

static_assert(std::endian::native == std::endian::little, "digits are put together in registers");

// 0 to 9999 without leading zeros. Overwrites four bytes.
char* writeWhole(char* at, uint32_t whole) {
  const unsigned leadingZeros = (whole < 10) + (whole < 100) + (whole < 1000);
  uint32_t digits = digitPairs[whole / 100] | uint32_t{digitPairs[whole % 100]} << 16;
  digits >>= leadingZeros * 8;
  std::memcpy(at, &digits, sizeof digits);
  return at + 4 - leadingZeros;
}

// The point and five decimals without trailing zeros; nothing for 0. Overwrites eight bytes.
char* writeDecimals(char* at, uint32_t hundredThousandths) {
  const uint32_t rest = hundredThousandths % 1000;
  const uint64_t text = uint64_t{'.'} | uint64_t{digitPairs[hundredThousandths / 1000]} << 8 |
                        uint64_t{digitPairs[rest / 10]} << 24 | uint64_t{'0' + rest % 10} << 40;
  std::memcpy(at, &text, sizeof text);
  // The point is no zero: it is the last byte found when all decimals are.
  const uint64_t noZeros = text ^ 0x303030303030;
  const int last = (63 - std::countl_zero(noZeros)) / 8;
  return at + last + (last != 0);
}

char* writeFixed(char* at, double value, int decimals) {
  const auto form = std::chars_format::fixed;
  return std::to_chars(at, at + mostNumberText, value, form, decimals).ptr;
}

// 10,000 and above: no decimals.
char* formatLarge(char* at, double value) {
  const double magnitude = std::fabs(value);
  if (!(magnitude < wholeLimit)) {
    return std::isnan(value) ? std::copy_n("nan", 3, at) : writeFixed(at, value, 0);
  }
  auto whole = static_cast<int64_t>(magnitude);
  const double fraction = magnitude - static_cast<double>(whole);
  whole += fraction > 0.5 || (fraction == 0.5 && whole % 2 == 1);
  return std::to_chars(at, at + mostNumberText, value < 0 ? -whole : whole).ptr;
}

// 9999.5 up to 10,000.
char* formatByDigits(char* at, double value) {
  char* end = writeFixed(at, value, precisionFor(std::fabs(value)).decimals);
  while (end[-1] == '0') {
    --end;
  }
  return end[-1] == '.' ? end - 1 : end;
}

}  // namespace

char* formatNumber(char* at, double value) {
  const double magnitude = std::fabs(value);
  if (!(magnitude < fastLimit)) [[unlikely]] {
    return magnitude < 10000 ? formatByDigits(at, value) : formatLarge(at, value);
  }
  const Precision& precision = precisionFor(magnitude);
  const uint32_t rounded = roundedProduct(magnitude, precision.scale) * precision.unit;
  *at = '-';
  at += std::signbit(value) && rounded != 0;
  at = writeWhole(at, rounded / 100000);
  return writeDecimals(at, rounded % 100000);
}

void formatNumber(std::string& text, double value) {
  char digits[mostNumberText];
  text.append(digits, formatNumber(digits, value));
}

void appendFixed(std::string& text, double value, int decimals) {
  if (std::isnan(value)) {
    text += "nan";
    return;
  }
  char digits[mostNumberText];
  text.append(digits, writeFixed(digits, value, decimals));
}

}  // namespace postscript
