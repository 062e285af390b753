// Tokens as numbers. What the rules say case by case stands in tests/ps/tokenizer.ps; here are the
// limits of reals, and that the short way of plain decimals never differs from the long one.
#include "postscript/values/NumberToken.h"

#include <gtest/gtest.h>

#include <bit>
#include <random>
#include <string>

namespace postscript {
namespace {

NumberToken readByTheRules(std::string_view token) {
  if (const auto integer = readInteger(token)) {
    return NumberToken::ofInteger(*integer);
  }
  const auto real = readReal(token);
  return real ? NumberToken::ofReal(*real) : NumberToken{};
}

bool same(const NumberToken& a, const NumberToken& b) {
  return a.kind == b.kind && a.integer == b.integer &&
         std::bit_cast<uint64_t>(a.real) == std::bit_cast<uint64_t>(b.real);
}

TEST(NumberToken, TooSmallForARealIsNone) {
  EXPECT_FALSE(readReal("0." + std::string(330, '0') + "1"));
  EXPECT_FALSE(readReal("0." + std::string(310, '0') + "1")) << "a denormal";
  EXPECT_FALSE(readReal("1" + std::string(309, '0')));
  EXPECT_EQ(readReal("0." + std::string(330, '0')), 0.0);
  EXPECT_EQ(readReal("0." + std::string(306, '0') + "1"), 1e-307);
}

TEST(NumberToken, ReadsPlainDecimalsAsTheRulesDo) {
  std::mt19937 random(7);
  const auto below = [&random](size_t limit) { return random() % limit; };
  // Mostly digits, so that whole numbers of every length come up, with and without a fault.
  const std::string_view alphabets[] = {"0123456789", "0123456789.", "00000000001.9+-",
                                        "0123456789012345678901234567890123456789.+-eE#xa"};
  for (int round = 0; round < 400000; ++round) {
    const std::string_view alphabet = alphabets[below(std::size(alphabets))];
    std::string token(below(4) == 0 ? 1 : 0, below(2) == 0 ? '-' : '+');
    for (size_t length = below(21); length > 0; --length) {
      token += alphabet[below(alphabet.size())];
    }
    ASSERT_TRUE(same(readNumber(token), readByTheRules(token))) << token;
  }
}

}  // namespace
}  // namespace postscript
