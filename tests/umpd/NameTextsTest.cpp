// The rules of naming that need no machine: escapes and the parts of a path.
#include <gtest/gtest.h>

#include "tests/umpd/Wide.h"
#include "umpd/NameEscapes.h"
#include "umpd/PathParts.h"

namespace {

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
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(narrow(decodeNameEscapes(wide(text))), expected) << text;
}

TEST(NameEscapes, AllowThisManyCharacters) {
  int allowed = 0;
  for (int c = 1; c < 0x10000; ++c) allowed += isAllowedNameChar(static_cast<char16_t>(c));
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
  const auto n = [](std::size_t count) { return std::string(count, 'n'); };
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
