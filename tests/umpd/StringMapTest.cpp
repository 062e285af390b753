#include "umpd/StringMap.h"

#include "tests/umpd/OnMachine.h"
#include "umpd/WideText.h"

namespace {

class StringMapTest : public OnMachine {
 protected:
  StringMap map{platform.messages};
};

TEST_F(StringMapTest, KeysFoldAsAsciiOnly) {
  EXPECT_TRUE(map.set(u"printerName", u"a"));
  EXPECT_TRUE(map.set(u"PRINTERNAME", u"b"));
  EXPECT_TRUE(map.set(u"\u00E4", u"small"));
  EXPECT_TRUE(map.set(u"\u00C4", u"capital"));
  ASSERT_EQ(map.pairs().size(), 3u);
  EXPECT_EQ(map.pairs()[0].key, u"printerName");
  EXPECT_EQ(*map.find(u"PrinterName"), u"b");
  EXPECT_EQ(map.find(u"printer"), nullptr);
}

TEST_F(StringMapTest, TheHundredAndNinetyFirstKeyIsLostButAnyOtherIsReplaced) {
  for (std::uint32_t i = 0; i < 190; ++i)
    EXPECT_TRUE(map.set(std::u16string(u"k").append(decimalText(i)), u""));
  EXPECT_TRUE(machine.messages.debugOutput.empty());
  EXPECT_FALSE(map.set(u"one more", u"x"));
  EXPECT_EQ(machine.messages.debugOutput, std::vector<std::u16string>{u"Help!! too many parms \n"});
  EXPECT_EQ(map.find(u"one more"), nullptr);
  EXPECT_TRUE(map.set(u"K189", u"new"));
  EXPECT_EQ(*map.find(u"k189"), u"new");
  map.clear();
  EXPECT_TRUE(map.set(u"one more", u"x"));
}

TEST(WideText, DecimalValueTakesLeadingDigits) {
  const std::pair<std::u16string_view, std::uint32_t> cases[] = {
      {u"", 0},           {u"007", 7},           {u"12ab", 12},
      {u"ab12", 0},       {u" \t5", 5},          {u"-1", 0xFFFFFFFF},
      {u"+3", 3},         {u"- 3", 0},           {u"0x10", 0},
      {u"4294967297", 1}, {u"4294967295x", ~0u}, {u"\u0661", 0}};
  for (const auto& [text, value] : cases)
    EXPECT_EQ(decimalValue(text), value) << testing::PrintToString(std::u16string(text));
}

}  // namespace
