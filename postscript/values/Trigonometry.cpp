// In integers, the argument becomes eighths of a turn, by a product with as many bits of 2/pi as
// its magnitude asks for: how many, modulo eight, and how far into the next one. What is left is at
// most pi/4, in fixed point of 128 bits; series give its sine and cosine, which are rounded once. A
// thread of a Windows program may find the processor set to less than its full precision, so long
// double would not do.
#include "postscript/values/Trigonometry.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace postscript {

namespace {

using Fixed = unsigned __int128;

// 2/pi, with 128 zero bits before the binary point. The greatest double needs 1161 bits behind it.
constexpr std::array<uint64_t, 21> twoByPi = {
    0x0000000000000000, 0x0000000000000000, 0xA2F9836E4E441529, 0xFC2757D1F534DDC0,
    0xDB6295993C439041, 0xFE5163ABDEBBC561, 0xB7246E3A424DD2E0, 0x06492EEA09D1921C,
    0xFE1DEB1CB129A73E, 0xE88235F52EBB4484, 0xE99C7026B45F7E41, 0x3991D639835339F4,
    0x9C845F8BBDF9283B, 0x1FF897FFDE05980F, 0xEF2F118B5A0A6D1F, 0x6D367ECF27CB09B7,
    0x4F463F669E5FEA2D, 0x7527BAC7EBE5F17B, 0x3D0739F78A5292EA, 0x6BFB5FB11F8D5D08,
    0x56033046FC7B6BAB};

// pi/4 in 128 bits behind the point.
constexpr Fixed quarterPi = Fixed{0xC90FDAA22168C234} << 64 | 0xC4C6628B80DC1CD1;

// Below it a sine is its argument and a cosine 1.
constexpr double leastReduced = 0x1p-27;

// After so many terms a series for pi/4 is right to 77 bits.
constexpr size_t terms = 11;

// 1/n! for every second n, in 127 bits behind the point.
constexpr std::array<Fixed, terms> inverseFactorials(uint32_t n) {
  std::array<Fixed, terms> inverses{};
  Fixed inverse = Fixed{1} << 127;
  for (Fixed& entry : inverses) {
    entry = inverse;
    inverse /= (n + 1) * (n + 2);
    n += 2;
  }
  return inverses;
}

constexpr std::array<Fixed, terms> cosineTerms = inverseFactorials(0);
constexpr std::array<Fixed, terms> sineTerms = inverseFactorials(1);

// The upper 128 bits of a product, but for a carry from below.
Fixed upperProduct(Fixed a, Fixed b) {
  const auto aUpper = static_cast<uint64_t>(a >> 64);
  const auto aLower = static_cast<uint64_t>(a);
  const auto bUpper = static_cast<uint64_t>(b >> 64);
  const auto bLower = static_cast<uint64_t>(b);
  return Fixed{aUpper} * bUpper + (Fixed{aUpper} * bLower >> 64) + (Fixed{aLower} * bUpper >> 64);
}

// Of the later terms so little remains that 64 bits of each do.
constexpr size_t longTerms = 4;
constexpr int shorter = 48;

Fixed alternatingSum(const std::array<Fixed, terms>& series, Fixed square) {
  const auto upperSquare = static_cast<uint64_t>(square >> 64);
  uint64_t tail = 0;
  for (size_t i = terms; i-- > longTerms;) {
    tail = static_cast<uint64_t>(series[i] >> shorter) -
           static_cast<uint64_t>(Fixed{upperSquare} * tail >> 64);
  }
  Fixed sum = Fixed{tail} << shorter;
  for (size_t i = longTerms; i-- > 0;) {
    sum = series[i] - upperProduct(square, sum);
  }
  return sum;
}

double rounded(Fixed value) {
  return static_cast<double>(value) * 0x1p-127;
}

// An angle from the nearest multiple of pi/2.
struct Remainder {
  uint32_t quarter;  // which multiple, modulo four
  bool isBelow;
  Fixed size;  // 128 bits behind the point
};

// 64 bits of 2/pi, from a bit of the table on.
uint64_t bitsAt(size_t bit) {
  const size_t word = bit / 64;
  const size_t shift = bit % 64;
  return twoByPi[word] << shift | twoByPi[word + 1] >> 1 >> (63 - shift);
}

// Of 2/pi the bits that count are those whose products with the argument lie below eight eighths;
// of the product of 192 bits, the top three are the number of eighths.
Remainder reduce(double magnitude) {
  const auto bits = std::bit_cast<uint64_t>(magnitude);
  const Fixed mantissa{(bits & 0xFFFFFFFFFFFFF) | 0x10000000000000};
  const size_t first = static_cast<size_t>(bits >> 52) - 949;
  const Fixed lower = mantissa * bitsAt(first + 128);
  const Fixed middle = mantissa * bitsAt(first + 64) + (lower >> 64);
  const Fixed upper = (mantissa * bitsAt(first) << 64) + middle;
  const auto eighth = static_cast<uint32_t>(upper >> 125);
  const Fixed part = upper << 3 | static_cast<uint64_t>(lower) >> 61;
  const bool isBelow = eighth % 2 != 0;
  return {(eighth + 1) / 2, isBelow, upperProduct(isBelow ? -part : part, quarterPi)};
}

}  // namespace

// The quarter says which of the remainder's two is the sine, and both signs. They are looked up:
// branches would be foretold wrong at every other angle.
SineAndCosine sineAndCosineInIntegers(double x) {
  const double magnitude = std::fabs(x);
  if (magnitude < leastReduced) {
    return {x, 1};
  }
  if (!std::isfinite(x)) {
    return {x - x, x - x};
  }
  constexpr double signs[] = {1, 1, -1, -1};
  const Remainder angle = reduce(magnitude);
  const Fixed square = upperProduct(angle.size, angle.size);
  const Fixed sine = upperProduct(angle.size, alternatingSum(sineTerms, square));
  const double values[] = {rounded(sine) * (angle.isBelow ? -1.0 : 1.0),
                           rounded(alternatingSum(cosineTerms, square))};
  const uint32_t quarter = angle.quarter % 4;
  return {values[quarter % 2] * signs[quarter] * std::copysign(1.0, x),
          values[1 - quarter % 2] * signs[(quarter + 1) % 4]};
}

// All but the first term of the series, taken from it, leaves little more than one rounding. Where
// the error could tip that over to the next double, the processor's instruction decides, which is
// slower.
double arcTangentBySeries(double x) {
  if (x == 0) {
    return x;
  }
  constexpr double small = 0.29;
  if (std::fabs(x) < small) {
    const double square = x * x;
    const double fourth = square * square;
    double even = 1.0 / 31;
    double odd = 1.0 / 29;
    for (int n = 27; n > 3; n -= 4) {
      even = 1.0 / n + fourth * even;
      odd = 1.0 / (n - 2) + fourth * odd;
    }
    even = 1.0 / 3 + fourth * even;
    const double taken = x * square * (even - square * odd);
    const double error = taken * 0x1p-50;
    const double least = x - (taken + error);
    if (least == x - (taken - error)) {
      return least;
    }
  }
  return std::atan2(x, 1.0);
}

}  // namespace postscript
