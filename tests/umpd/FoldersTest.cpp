#include "umpd/Folders.h"

#include "tests/umpd/OnMachine.h"

namespace umpd {
namespace {

TEST_F(OnMachine, TheDriverDirectoryHasItsVersionsSubdirectory) {
  const struct {
    WindowsRelease release;
    std::u16string directory, call;
  } cases[] = {{WindowsRelease::windows98, u"D:\\drv\\", u"narrow"},
               {WindowsRelease::nt4, u"D:\\drv\\2\\", u"wide"},
               {WindowsRelease::windows2000, u"D:\\drv\\3\\", u"wide"},
               {WindowsRelease::windows7, u"D:\\drv\\3\\", u"wide"}};
  machine_.spooler.driverDirectoryPath = u"D:\\drv";
  for (const auto& each : cases) {
    simulated_.become(each.release);
    platform_.process.reset();
    EXPECT_EQ(getDriverDirectory(platform_, 260), each.directory);
    EXPECT_EQ(machine_.journal.last("driverDirectory"), each.call);
  }
}

TEST_F(OnMachine, TheDriverDirectoryIsAskedForOnce) {
  machine_.spooler.driverDirectoryPath = u"D:\\drv";
  EXPECT_EQ(getDriverDirectory(platform_, 0), std::nullopt);
  machine_.journal.failAlways("driverDirectory");
  EXPECT_EQ(getDriverDirectory(platform_, 260), std::nullopt);
  machine_.journal.failAlways("driverDirectory", false);
  EXPECT_EQ(getDriverDirectory(platform_, 8), std::nullopt);
  machine_.spooler.driverDirectoryPath = u"D:\\elsewhere";
  EXPECT_EQ(getDriverDirectory(platform_, 9), u"D:\\drv\\3\\");
  EXPECT_EQ(machine_.journal.count("driverDirectory"), 2u);
  platform_.process.reset();
  machine_.spooler.driverDirectoryPath.clear();
  EXPECT_EQ(getDriverDirectory(platform_, 260), std::nullopt);
}

TEST_F(OnMachine, ProductDataFallsBackFromFolderToFolder) {
  EXPECT_EQ(productDataFolder(platform_), u"C:\\Users\\pat\\AppData\\Local\\Quillpress");
  EXPECT_TRUE(machine_.files.isDirectory(u"C:\\Users\\pat\\AppData\\Local\\Quillpress"));
  const auto made = machine_.journal.count("makeDirectory");
  productDataFolder(platform_);
  EXPECT_EQ(machine_.journal.count("makeDirectory"), made);
  machine_.files.folders[SpecialFolder::localApplicationData].clear();
  EXPECT_EQ(productDataFolder(platform_), u"C:\\Users\\pat\\AppData\\Roaming\\Quillpress");
  machine_.files.folders.clear();
  EXPECT_EQ(productDataFolder(platform_), u"c:\\");
}

TEST_F(OnMachine, MakeDirectoriesMakesTheWholeWay) {
  machine_.files.addFile(u"C:\\file", "");
  const std::pair<std::u16string, std::u16string> cases[] = {
      {u"C:\\a\\b/c\\\\d", u"C:\\a\\b\\c\\d"},
      {u"C:\\a\\e\\", u"C:\\a\\e"},
      {u"C:", u"C:"},
      {u"", u""},
      {u"\\/", u""},
      {u"C:\\file\\x", u""},
      // There is no such drive; the file that cannot be made there will tell.
      {u"Z:\\x", u"C:"},
      // The two separators in front are lost.
      {u"\\\\server\\share", u"C:\\work\\server\\share"}};
  for (const auto& [path, made] : cases) {
    EXPECT_EQ(makeDirectories(platform_, path), !made.empty()) << testing::PrintToString(path);
    EXPECT_TRUE(made.empty() || machine_.files.isDirectory(made));
  }
}

}  // namespace
}  // namespace umpd
