#include "umpd/ProtectedMode.h"

#include <gtest/gtest.h>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"

namespace umpd {
namespace {

using ProtectedModeTest = OnMachine;

TEST_F(ProtectedModeTest, ShadowsTheApplicationData) {
  auto& folders = machine_.files.folders;
  const std::string cache = "\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\";
  const auto path = [&] { return narrow(virtualizedTempPath(platform_)); };
  folders[SpecialFolder::localApplicationData] = u"C:\\Data\\Local";
  EXPECT_EQ(path(), "C:\\Data\\Local" + cache + "C\\Data\\Local\\");
  folders[SpecialFolder::localApplicationData] = u"";
  folders[SpecialFolder::applicationData] = u"D:\\R\\";
  EXPECT_EQ(path(), "D:\\R\\" + cache + "D\\R\\");
  folders[SpecialFolder::applicationData] = u"D:\\" + std::u16string(250, u'r');
  EXPECT_EQ(path().size(), 519u);
  folders.clear();
  EXPECT_EQ(path(), cache);
}

}  // namespace
}  // namespace umpd
