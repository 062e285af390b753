#include "umpd/platform/WideText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

namespace umpd {
namespace {

TEST(WideText, DecimalValueTakesLeadingDigits) {
  const std::pair<std::u16string_view, uint32_t> cases[] = {
      {u"", 0},           {u"007", 7},           {u"12ab", 12},
      {u"ab12", 0},       {u" \t5", 5},          {u"-1", 0xFFFFFFFF},
      {u"+3", 3},         {u"- 3", 0},           {u"0x10", 0},
      {u"4294967297", 1}, {u"4294967295x", ~0u}, {u"\u0661", 0}};
  for (const auto& [text, value] : cases) {
    EXPECT_EQ(decimalValue(text), value) << testing::PrintToString(std::u16string(text));
  }
}

}  // namespace
}  // namespace umpd
