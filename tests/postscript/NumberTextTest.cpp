// Numbers of content texts: what the fast way writes is what the exact digits say.
#include "postscript/values/NumberText.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <random>

namespace postscript {
namespace {

std::string byExactDigits(double value) {
  const double magnitude = std::fabs(value);
  const bool large = !(magnitude < 10000);
  const int decimals = large               ? 0
                       : magnitude >= 1000 ? 1
                       : magnitude >= 10   ? 3
                       : magnitude >= 1    ? 4
                                           : 5;
  std::string text;
  appendFixed(text, value, decimals);
  if (large) {
    return text;
  }
  text.erase(text.find_last_not_of('0') + 1);
  text.erase(text.find_last_not_of('.') + 1);
  return text == "-0" ? "0" : text;
}

void expectExact(double value) {
  std::string text;
  formatNumber(text, value);
  ASSERT_EQ(text, byExactDigits(value)) << std::hexfloat << value;
}

// The value and the doubles next to it, of both signs.
void expectExactAround(double value) {
  for (const double middle : {value, -value}) {
    expectExact(middle);
    expectExact(std::nextafter(middle, INFINITY));
    expectExact(std::nextafter(middle, -INFINITY));
  }
}

TEST(NumberText, RoundsTiesOfEveryPrecisionAsTheExactValueDoes) {
  for (int i = 0; i < 20000; ++i) {
    expectExactAround(i / 100000.0 + 0.000005);
    expectExactAround(i / 10000.0 + 0.00005);
    expectExactAround(i / 1000.0 + 0.0005);
    expectExactAround(i / 10.0 + 0.05);
    expectExactAround(i + 0.5);
    expectExactAround(i / 16.0);
  }
}

TEST(NumberText, WritesValuesOfEveryMagnitudeAsTheExactDigitsSay) {
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> fraction(-1, 1), exponent(-8, 20);
  for (int i = 0; i < 200000; ++i) {
    expectExact(fraction(random) * std::pow(10, exponent(random)));
  }
  for (const double value : {0.0, 9999.5, 9999.95, 10000.0, 10000.5, 4503599627370496.5, 1e15,
                             0x1p53, 1e300, 5e-324, HUGE_VAL}) {
    expectExactAround(value);
  }
}

}  // namespace
}  // namespace postscript
