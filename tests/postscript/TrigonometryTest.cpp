// Sine, cosine and arc tangent, where other ways to compute them lose bits. The values are exact
// ones, rounded once, of arguments for which glibc has them too.
#include "postscript/values/Trigonometry.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

namespace postscript {
namespace {

uint64_t bitsOf(double value) {
  return std::bit_cast<uint64_t>(value);
}

TEST(Trigonometry, IsExactForArgumentsOfEverySize) {
  const struct {
    double x, sine, cosine;
  } rows[] = {
      {0.0, 0.0, 1.0},
      {-0.0, -0.0, 1.0},
      {-0x1p-1074, -0x1p-1074, 1.0},
      {0x1p-27, 0x1p-27, 1.0},
      {0x1.8p-10, 0x1.7ffff70000103p-10, 0x1.ffffdc00006c0p-1},
      {0.5, 0x1.eaee8744b05f0p-2, 0x1.c1528065b7d50p-1},
      {1.0, 0x1.aed548f090ceep-1, 0x1.14a280fb5068cp-1},
      {-2.0, -0x1.d18f6ead1b446p-1, -0x1.aa22657537205p-2},
      {3.0, 0x1.210386db6d55bp-3, -0x1.fae04be85e5d2p-1},
      {-4.0, 0x1.837b9dddc1eaep-1, -0x1.4eaa606db24c1p-1},
      {5.0, -0x1.eaf81f5e09933p-1, 0x1.22785706b4ad9p-2},
      {6.0, -0x1.1e1f18ab0a2c0p-2, 0x1.eb9b7097822f5p-1},
      // Next to quarters of a turn.
      {0x1.921fb54411744p+0, 1.0, 0x1.8aea234c4c663p-35},
      {0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53, -1.0},
      {0x1.86ap+16, 0x1.24daa9c527e96p-5, -0x1.ffac3841b3da7p-1},
      {0x1.8p+54, -0x1.97df1ebb37418p-4, 0x1.fd748a55e8dedp-1},
      {1e22, -0x1.b453ab76bf397p-1, 0x1.0be2cef01c8f4p-1},
      {-1e300, 0x1.a2c16b010e385p-1, -0x1.2699022adc4c1p-1},
      {0x1.fffffffffffffp+1023, 0x1.452fc98b34e97p-8, -0x1.fffe62ecfab75p-1},
  };
  for (const auto& row : rows) {
    const SineAndCosine pairs[] = {
        {sine(row.x), cosine(row.x)}, sineAndCosine(row.x), sineAndCosineInIntegers(row.x)};
    for (const SineAndCosine& pair : pairs) {
      EXPECT_EQ(bitsOf(pair.sine), bitsOf(row.sine)) << std::hexfloat << row.x;
      EXPECT_EQ(bitsOf(pair.cosine), bitsOf(row.cosine)) << std::hexfloat << row.x;
    }
  }
}

TEST(Trigonometry, RoundsArcTangentsOnce) {
  const double rows[][2] = {{-0.0, -0.0},
                            {0x1p-1074, 0x1p-1074},
                            {0x1.df8322029652p-6, 0x1.df601a0703c03p-6},
                            {0.1, 0x1.983e282e2cc4dp-4},
                            {0.25, 0x1.f5b75f92c80ddp-3},
                            {-0x1.27525460aa64cp-2, -0x1.1f850811f97c5p-2},
                            {-0x1.921fb54442d18p+1, -0x1.433b8a322ddd3p+0}};
  for (const auto& [x, angle] : rows) {
    EXPECT_EQ(bitsOf(arcTangent(x)), bitsOf(angle)) << std::hexfloat << x;
    EXPECT_EQ(bitsOf(arcTangentBySeries(x)), bitsOf(angle)) << std::hexfloat << x;
  }
}

// No double lies nearer to a multiple of pi/2 than this one, by its size.
TEST(Trigonometry, KeepsAllBitsOfTheLeastRemainder) {
  EXPECT_EQ(sineAndCosineInIntegers(0x1.6ac5b262ca1ffp+849).cosine, -0x1.14ae72e6ba22fp-61);
}

// An argument and its double take different bits of 2/pi: a wrong one shows.
TEST(Trigonometry, AgreesWithItselfAtTwiceTheAngle) {
  for (const double fraction : {1.0, 1.25, 1.6180339887498949, -1.9999999999999998}) {
    for (int exponent = -30; exponent < 1023; ++exponent) {
      const double x = std::ldexp(fraction, exponent);
      const auto [s, c] = sineAndCosineInIntegers(x);
      const SineAndCosine twice = sineAndCosineInIntegers(2 * x);
      EXPECT_NEAR(s * s + c * c, 1, 1e-15) << std::hexfloat << x;
      EXPECT_NEAR(twice.sine, 2 * s * c, 1e-15) << std::hexfloat << x;
      EXPECT_NEAR(twice.cosine, c * c - s * s, 1e-15) << std::hexfloat << x;
    }
  }
}

TEST(Trigonometry, OfInfinityAndOfNoNumberIsNoNumber) {
  for (const double x : {HUGE_VAL, -HUGE_VAL, std::nan("")}) {
    EXPECT_EQ(bitsOf(sineAndCosineInIntegers(x).sine), bitsOf(x - x)) << x;
    EXPECT_EQ(bitsOf(sineAndCosineInIntegers(x).cosine), bitsOf(x - x)) << x;
    EXPECT_TRUE(std::isnan(sine(x)) && std::isnan(cosine(x))) << x;
  }
}

}  // namespace
}  // namespace postscript
