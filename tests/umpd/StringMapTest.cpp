#include "umpd/StringMap.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "tests/umpd/OnMachine.h"
#include "umpd/platform/WideText.h"

namespace umpd {
namespace {

using StringMapTest = OnMachine;

TEST_F(StringMapTest, FoldsKeysAsAsciiOnly) {
  StringMap map(platform_.messages);
  EXPECT_TRUE(map.set(u"printerName", u"a"));
  EXPECT_TRUE(map.set(u"PRINTERNAME", u"b"));
  EXPECT_TRUE(map.set(u"\u00E4", u"small"));
  EXPECT_TRUE(map.set(u"\u00C4", u"capital"));
  ASSERT_EQ(map.pairs().size(), 3u);
  EXPECT_EQ(map.pairs()[0].key, u"printerName");
  EXPECT_EQ(map.find(u"PrinterName"), u"b");
  EXPECT_EQ(map.find(u"printer"), std::nullopt);
}

TEST_F(StringMapTest, LosesTheHundredAndNinetyFirstKey) {
  StringMap map(platform_.messages);
  for (uint32_t i = 0; i < 190; ++i) {
    EXPECT_TRUE(map.set(std::u16string(u"k").append(decimalText(i)), u""));
  }
  EXPECT_TRUE(machine_.messages.debugOutput.empty());
  EXPECT_FALSE(map.set(u"one more", u"x"));
  EXPECT_EQ(machine_.messages.debugOutput,
            std::vector<std::u16string>{u"Help!! too many parms \n"});
  EXPECT_EQ(map.find(u"one more"), std::nullopt);
  EXPECT_TRUE(map.set(u"K189", u"new"));
  EXPECT_EQ(map.find(u"k189"), u"new");
  map.clear();
  EXPECT_TRUE(map.set(u"one more", u"x"));
}

}  // namespace
}  // namespace umpd
