#include "umpd/PathParts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "tests/umpd/Wide.h"

namespace umpd {
namespace {

struct Case {
  std::string text, expected;
};

TEST(PathParts, AreCutAtTheirRoom) {
  const std::u16string a(300, u'a');
  const std::u16string path = u'\\' + a + u'\\' + a + u'.' + a;
  const PathParts cut = splitPath(path);
  EXPECT_TRUE(cut.drive.empty());
  EXPECT_EQ(cut.directory.size(), 255u);
  EXPECT_EQ(cut.name.size(), 255u);
  EXPECT_EQ(cut.extension.size(), 255u);
}

TEST(PathParts, BeginWithADriveThatMayBeAllThereIs) {
  struct Start {
    const char* path;
    size_t fileName;
    const char* drive;
  };
  const Start starts[] = {{"", 0, ""},     {"a", 0, ""},       {":", 0, ""},
                          {"C:", 2, "C:"}, {"C:a", 2, "C:"},   {"C:\\d/a", 5, "C:"},
                          {"a\\b", 2, ""}, {"\\\\s\\b", 4, ""}};
  for (const auto& [path, fileName, drive] : starts) {
    EXPECT_EQ(fileNameStart(wide(path)), fileName) << path;
    EXPECT_EQ(narrow(std::u16string(splitPath(wide(path)).drive)), drive) << path;
  }
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
