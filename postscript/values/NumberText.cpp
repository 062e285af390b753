// How a number of a content text is written fast: its magnitude is multiplied by a power of ten and
// rounded to an integer, whose digits are the text. One multiplication rounds once, so the product
// can be wrong by less than its last bit. That matters only where it lies exactly between two
// integers: there the sign of its error decides. Everything else (10,000 and above, infinities) is
// left to std::to_chars, which is exact and five times slower.
#include "postscript/values/NumberText.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace postscript {

namespace {

// The decimals by magnitude: below 1, 10, 1,000 and 10,000.
struct Precision {
  constexpr explicit Precision(int theDecimals) : decimals(theDecimals) {
    for (int i = 0; i < decimals; ++i) {
      scale *= 10;
      wholeBits -= 8;
    }
  }

  int decimals;
  double scale = 1;         // ten to the power of the decimals
  unsigned wholeBits = 64;  // of eight digits in a word, those before the point
};
constexpr Precision precisions[] = {Precision(5), Precision(4), Precision(3), Precision(1)};

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

// The exact product's nearest integer, ties to even. Adding 2^52 leaves no room for a fraction: the
// sum is rounded to an integer, which its low bits hold.
uint32_t roundedProduct(double number, double scale) {
  constexpr double noFractions = 4503599627370496.0;
  const double product = number * scale;
  const double sum = product + noFractions;
  const auto whole = static_cast<uint32_t>(std::bit_cast<uint64_t>(sum));
  const double fraction = product - (sum - noFractions);
  if (std::fabs(fraction) == 0.5) [[unlikely]] {
    const double error = productError(number, scale, product);
    // The tie went to the even neighbour; if the exact product is on the other side, it goes there.
    return whole + (fraction > 0 && error > 0) - (fraction < 0 && error < 0);
  }
  return whole;
}

static_assert(std::endian::native == std::endian::little, "digits are put together in registers");

// The eight digits of a number below 10^8, each in a byte of its own, the first in the lowest.
// Halves of four digits are parted in 32 bits each, then pairs in 16 bits, then digits.
uint64_t eightDigits(uint32_t number) {
  const uint64_t fours = number / 10000 | uint64_t{number % 10000} << 32;
  const uint64_t hundreds = (fours * 10486 >> 20) & 0x0000007f0000007f;
  const uint64_t pairs = hundreds | (fours - hundreds * 100) << 16;
  const uint64_t tens = (pairs * 103 >> 10) & 0x000f000f000f000f;
  return tens | (pairs - tens * 10) << 8;
}

// Writes digits with a point after the whole ones, without the zeros that lead (up to the last
// digit before the point) or follow (up to the point, which then goes too). Overwrites 16 bytes.
char* writeWithPoint(char* at, uint64_t digits, unsigned wholeBits) {
  const uint64_t text = digits | 0x3030303030303030;
  // A bit for each end where the zeros stop if no other digit does.
  const uint64_t last = uint64_t{1} << (wholeBits - 8);
  const int leading = std::countr_zero(digits | last) / 8;
  const uint64_t whole = text >> leading * 8;
  std::memcpy(at, &whole, sizeof whole);
  at += static_cast<int>(wholeBits / 8) - leading;
  const uint64_t decimals = text >> wholeBits << 8 | '.';
  std::memcpy(at, &decimals, sizeof decimals);
  const int following = (63 - std::countl_zero(digits >> wholeBits << 8 | 1)) / 8;
  return at + following + (following != 0);
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
  const uint32_t rounded = roundedProduct(magnitude, precision.scale);
  *at = '-';
  at += std::signbit(value) && rounded != 0;
  return writeWithPoint(at, eightDigits(rounded), precision.wholeBits);
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
