// Parts under the front end that know little of a machine: handles, the map of settings, numbers,
// and the rules of naming.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"
#include "umpd/NameEscapes.h"
#include "umpd/PathParts.h"
#include "umpd/StringMap.h"
#include "umpd/platform/Owned.h"
#include "umpd/platform/WideText.h"

namespace umpd {
namespace {

struct Shelf {
  void close(int handle) { closed.push_back(handle); }
  std::vector<int> closed;
};

TEST(Owned, ClosesOnceWhoeverHoldsIt) {
  using OwnedInt = Owned<Shelf, int>;
  Shelf shelf;
  {
    OwnedInt first(shelf, 1);
    OwnedInt second(std::move(first));
    EXPECT_FALSE(first);  // NOLINT: what a move leaves is promised
    OwnedInt third(shelf, 3);
    third = std::move(second);
    EXPECT_EQ(shelf.closed, std::vector{3});
    OwnedInt& itself = third;
    third = std::move(itself);
    EXPECT_EQ(third.get(), 1);
    EXPECT_EQ(OwnedInt(shelf, 7).release(), 7);
    OwnedInt dropped(shelf, 8);
    dropped.reset();
    EXPECT_FALSE(dropped || OwnedInt(shelf, 0) || OwnedInt());
  }
  EXPECT_EQ(shelf.closed, (std::vector{3, 8, 1}));
}

TEST_F(OnMachine, StringMapFoldsKeysAsAsciiOnly) {
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

TEST_F(OnMachine, StringMapLosesTheHundredAndNinetyFirstKey) {
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

struct Case {
  std::string text, expected;
};

TEST(NameEscapes, AreDecoded) {
  const Case cases[] = {
      {"a+b", "a b"},        {"%41%6a%E9", "Aj\xE9"},  {"%%41", "%A"}, {"%", "%"},
      {"a%%", "a%%"},        {"%2F%5c%3A%1f", "____"}, {"%4x.", "_."}, {"%4", "_"},
      {"%A", "_"},           {"a%00b", "a"},           {"a%zzb", "a"}, {"a%-1b", "a"},
      {"a% 41", "a"},        {"%4%41", "_41"},         {"%2B", "_"},   {"%25%32", "%2"},
      {"a:b\xBF", "a:b\xBF"}};
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(narrow(decodeNameEscapes(wide(text))), expected) << text;
  }
}

TEST(NameEscapes, AllowThisManyCharacters) {
  int allowed = 0;
  for (int c = 1; c < 0x10000; ++c) {
    allowed += isAllowedNameChar(static_cast<char16_t>(c));
  }
  EXPECT_EQ(allowed, 10 + 26 + 26 + 64 + 20);
  EXPECT_TRUE(isAllowedNameChar(0));
}

TEST(PathParts, AreCutAtTheirRoom) {
  const std::u16string a(300, u'a');
  const std::u16string path = u'\\' + a + u'\\' + a + u'.' + a;
  const PathParts cut = splitPath(path);
  EXPECT_TRUE(cut.drive.empty());
  EXPECT_EQ(cut.directory.size(), 255u);
  EXPECT_EQ(cut.name.size(), 255u);
  EXPECT_EQ(cut.extension.size(), 255u);
}

TEST(PathParts, AreShortenedAbove260Characters) {
  const auto n = [](size_t count) { return std::string(count, 'n'); };
  const Case cases[] = {
      {"C:\\" + n(257), "C:\\" + n(257)},
      {"C:\\" + n(258), "C:\\" + n(255)},
      {"C:\\d\\" + n(252) + ".pdf", "C:\\d\\" + n(250) + ".pdf"},
      {"\\\\s\\" + n(300) + ".pdf", "\\\\s\\" + n(251) + ".pdf"},
      // The directory stays with a sum of 257, not of 258.
      {"C:\\" + n(249) + "\\nnnnnn.pdf", "C:\\" + n(249) + "\\nn.pdf"},
      {"C:\\" + n(250) + "\\nnnnn.pdf", "C:\\nnnnn.pdf"},
      {"C:\\dir\\x." + n(300), "C:\\x." + n(254)},
      {n(300) + "." + n(300), n(4) + "." + n(254)},
  };
  for (const auto& [text, expected] : cases) {
    std::u16string path = wide(text);
    shortenPath(path);
    EXPECT_EQ(narrow(path), expected);
  }
}

}  // namespace
}  // namespace umpd
