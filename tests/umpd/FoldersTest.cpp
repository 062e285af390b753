#include "umpd/Folders.h"

#include "tests/umpd/OnMachine.h"

namespace {

TEST_F(OnMachine, TheDriverDirectoryHasItsVersionsSubdirectory) {
  const struct {
    WindowsRelease release;
    std::u16string directory, call;
  } cases[] = {{WindowsRelease::windows98, u"D:\\drv\\", u"narrow"},
               {WindowsRelease::nt4, u"D:\\drv\\2\\", u"wide"},
               {WindowsRelease::windows2000, u"D:\\drv\\3\\", u"wide"},
               {WindowsRelease::windows7, u"D:\\drv\\3\\", u"wide"}};
  machine.spooler.driverDirectoryPath = u"D:\\drv";
  for (const auto& each : cases) {
    simulated.become(each.release);
    platform.process = {};
    EXPECT_EQ(getDriverDirectory(platform, 260), each.directory);
    EXPECT_EQ(machine.journal.last("driverDirectory"), each.call);
  }
}

TEST_F(OnMachine, TheDriverDirectoryIsAskedForOnce) {
  machine.spooler.driverDirectoryPath = u"D:\\drv";
  EXPECT_EQ(getDriverDirectory(platform, 0), std::nullopt);
  machine.journal.failAlways("driverDirectory");
  EXPECT_EQ(getDriverDirectory(platform, 260), std::nullopt);
  machine.journal.failAlways("driverDirectory", false);
  EXPECT_EQ(getDriverDirectory(platform, 8), std::nullopt);
  machine.spooler.driverDirectoryPath = u"D:\\elsewhere";
  EXPECT_EQ(getDriverDirectory(platform, 9), u"D:\\drv\\3\\");
  EXPECT_EQ(machine.journal.count("driverDirectory"), 2u);
  platform.process = {};
  machine.spooler.driverDirectoryPath.clear();
  EXPECT_EQ(getDriverDirectory(platform, 260), std::nullopt);
}

TEST_F(OnMachine, ProductDataFallsBackFromFolderToFolder) {
  EXPECT_EQ(productDataFolder(platform), u"C:\\Users\\pat\\AppData\\Local\\Quillpress");
  EXPECT_TRUE(machine.files.isDirectory(u"C:\\Users\\pat\\AppData\\Local\\Quillpress"));
  const auto made = machine.journal.count("makeDirectory");
  productDataFolder(platform);
  EXPECT_EQ(machine.journal.count("makeDirectory"), made);
  machine.files.folders[SpecialFolder::localApplicationData].clear();
  EXPECT_EQ(productDataFolder(platform), u"C:\\Users\\pat\\AppData\\Roaming\\Quillpress");
  machine.files.folders.clear();
  EXPECT_EQ(productDataFolder(platform), u"c:\\");
}

TEST_F(OnMachine, MakeDirectoriesMakesTheWholeWay) {
  machine.files.addFile(u"C:\\file", "");
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
    EXPECT_EQ(makeDirectories(platform, path), !made.empty()) << testing::PrintToString(path);
    EXPECT_TRUE(made.empty() || machine.files.isDirectory(made));
  }
}

}  // namespace
