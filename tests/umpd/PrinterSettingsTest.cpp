// How a job finds its printer's name and settings, and what a new printer key starts with.
#include "umpd/PrinterSettings.h"

#include <gtest/gtest.h>

#include <cstddef>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"
#include "umpd/ProductNames.h"

namespace umpd {
namespace {

const std::u16string topKey = u"HKCU\\Software\\Quillpress\\";
const std::u16string defaultKey = topKey + u"Tarnwick Quillpress";
const std::u16string driverFolder = u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\";

class PrinterSettingsTest : public OnMachine {
 protected:
  std::string inMap(std::u16string_view key, const PrinterSettings* of = nullptr) {
    const std::optional<std::u16string> value = (of ? *of : settings_).params.find(key);
    return value ? narrow(*value) : "(none)";
  }
  SimulatedRegistry& registry_ = machine_.registry;
  PrinterSettings settings_{platform_};
};

TEST_F(PrinterSettingsTest, TheDefaultNameIsTheStoredOneIfThereIsRoom) {
  const std::u16string builtIn(defaultPrinterName), fits(259, u'p'), tooLong(260, u'p');
  EXPECT_EQ(PrinterSettings(platform_).printerName, builtIn);
  for (const auto& [stored, name] :
       {std::pair(std::u16string(), builtIn), {fits, fits}, {tooLong, builtIn}}) {
    registry_.setText(topKey, u"printerName", stored);
    EXPECT_EQ(PrinterSettings(platform_).printerName, name);
  }
}

TEST_F(PrinterSettingsTest, NamesArePlainOrInPortForm) {
  machine_.spooler.add(u"Foreign", u"\\\\server\\laser", u"Another Driver");
  machine_.spooler.add(u"Office", u"\\\\server\\laser");
  settings_.setPrinterName(u",,server,laser");
  EXPECT_EQ(settings_.printerName, u"Office");
  EXPECT_EQ(settings_.effectiveName(), u",,server,laser");
  settings_.setPrinterName(u"\\\\nobody");
  EXPECT_EQ(settings_.printerName, u"");
  EXPECT_EQ(settings_.effectiveName(), u"\\\\nobody");
  settings_.params.set(u"passthru", u"1");
  settings_.setPrinterName(u"Plain");
  EXPECT_EQ(settings_.effectiveName(), u"Plain");
  EXPECT_EQ(inMap(u"passthru"), "1");
  settings_.setPrinterName(u"\\\\nobody");
  settings_.setPrinterName({});
  EXPECT_EQ(settings_.effectiveName(), u"Tarnwick Quillpress");
  EXPECT_EQ(inMap(u"passthru"), "(none)");
}

TEST_F(PrinterSettingsTest, LoadsNumbersAndTextsAndNothingElse) {
  registry_.setDword(defaultKey, u"big", 0xFFFFFFFF);
  registry_.setText(defaultKey, u"text", u"a b");
  registry_.setText(defaultKey, u"empty", u"");
  registry_.setDword(defaultKey, u"", 5);
  registry_.setValue(defaultKey, u"expandable", 2, std::vector<std::byte>(4));
  settings_.params.set(u"stale", u"1");
  EXPECT_TRUE(settings_.loadSettings());
  EXPECT_EQ(settings_.params.pairs().size(), 3u);
  EXPECT_EQ(inMap(u"BIG"), "4294967295");
  EXPECT_EQ(inMap(u"text"), "a b");
  EXPECT_EQ(inMap(u"empty"), "");
  EXPECT_EQ(machine_.journal.count("writeValue"), 0u);  // the key stood
}

TEST_F(PrinterSettingsTest, WithoutARegistryTheMapStays) {
  registry_.makeKey(defaultKey);
  for (const char* operation : {"openCurrentUser", "createKey", "writeValue", "queryInfo"}) {
    machine_.journal.failAlways(operation);
    PrinterSettings each(platform_);
    EXPECT_EQ(each.printerName, u"Tarnwick Quillpress");
    each.params.set(u"kept", u"1");
    const bool readable = std::string_view(operation) == "writeValue";
    EXPECT_EQ(each.loadSettings(), readable) << operation;
    EXPECT_EQ(inMap(u"kept", &each), readable ? "(none)" : "1");
    const bool writable = std::string_view(operation) == "queryInfo";
    EXPECT_EQ(each.setRegistryString(u"DocName", u"x"), writable);
    EXPECT_EQ(inMap(u"DocName", &each), writable ? "x" : "(none)");
    machine_.journal.failAlways(operation, false);
  }
  EXPECT_EQ(simulated_.openHandles(), 0u);
}

TEST_F(PrinterSettingsTest, ANewKeyGetsTheDefaultsAndTheInstallationsOverThem) {
  const std::u16string config = driverFolder + u"tqpconf.ini";
  machine_.profiles.setSection(config, u"init", {u"imageDPI=600", u"resIndex=0x7"});
  machine_.profiles.setSection(config, u",,srv,Office", {u"imageDPI=1200"});
  settings_.setPrinterName(u"\\\\srv\\Office");
  EXPECT_TRUE(settings_.loadSettings());
  EXPECT_EQ(registry_.shown(topKey, u"printerName"), u"\\\\srv\\Office");
  const std::u16string key = topKey + u",,srv,Office";
  const std::pair<std::u16string, std::string> expected[] = {
      {u"NextAction", "3"},
      {u"SaveFilenameAction", "3"},
      {u"DefaultSaveDir", "C:\\Users\\pat\\AppData\\Local\\Quillpress"},
      {u"LastDir", "C:\\Users\\pat\\Documents"},
      {u"ExecCmdLine", narrow(driverFolder) + "tqpview.exe -nav=\"%s\" -docname=\"%s\""},
      {u"DefaultSaveFilename", "tmp.pdf"},
      {u"resIndex", "0x7"},
      {u"jpegImageQuality", "75"},
      {u"imageDPI", "1200"},
      {u"TrimNameChar", "45"},
      {u"showDrellisButton", "0"}};
  EXPECT_EQ(settings_.params.pairs().size(), std::size(expected));
  for (const auto& [name, value] : expected) {
    EXPECT_EQ(narrow(registry_.shown(key, name)), value);
    EXPECT_EQ(inMap(name), value);
  }
  EXPECT_EQ(registry_.value(key, u"imageDPI")->type, registryDword);
}

TEST_F(PrinterSettingsTest, DefaultsDoWithoutFoldersAndWithoutEachOther) {
  machine_.files.folders.clear();
  // With the viewer's name and arguments this comes to 260 characters.
  machine_.spooler.driverDirectoryPath = u"C:\\" + std::u16string(260 - 11 - 24 - 6, u'd');
  machine_.journal.before("writeValue", [this] {
    machine_.journal.failAlways("writeValue", machine_.journal.last("writeValue") == u"NextAction");
  });
  settings_.loadSettings();
  EXPECT_EQ(inMap(u"NextAction"), "(none)");
  EXPECT_EQ(inMap(u"DefaultSaveDir"), "c:\\");
  EXPECT_EQ(inMap(u"LastDir"), "c:\\");
  EXPECT_EQ(inMap(u"ExecCmdLine"), "(none)");

  platform_.process.driverDirectory.clear();
  machine_.spooler.driverDirectoryPath.pop_back();
  settings_.writeDefaultSettings();
  EXPECT_EQ(inMap(u"ExecCmdLine").size(), 259u);
  EXPECT_EQ(inMap(u"printerName"), "Tarnwick Quillpress");
}

TEST_F(PrinterSettingsTest, TextsAreHeldToTheBufferAndDefaultsAreNot) {
  settings_.params.set(u"four", u"abcd");
  settings_.params.set(u"none", u"");
  const auto read = [&](std::u16string_view key, size_t size, const char16_t* fallback) {
    char16_t buffer[20] = u"untouched";
    settings_.getSettingString(key, buffer, size, fallback);
    return narrow(buffer);
  };
  EXPECT_EQ(read(u"FOUR", 5, u"x"), "abcd");
  EXPECT_EQ(read(u"four", 4, u"default"), "default");
  EXPECT_EQ(read(u"none", 5, u"x"), "x");
  EXPECT_EQ(read(u"missing", 5, nullptr), "untouched");
}

TEST_F(PrinterSettingsTest, TheDriversFileHoldsItsNineSettings) {
  const std::u16string path = u"C:\\windows\\system32\\tqpcfg.1";
  machine_.files.addFile(path, "what stood there before");
  EXPECT_TRUE(settings_.copyNameValuesToPrinterDriverConfigFile());
  EXPECT_EQ(machine_.files.content(path), "");

  for (const char16_t* key :
       {u"watermarkFontSize", u"watermark", u"watermarkFontName", u"jpegImageQuality", u"imageDPI",
        u"pdfTemplateOnTop", u"pdfTemplate", u"printerData4", u"resolution", u"resIndex"}) {
    settings_.params.set(key, u"&=");
  }
  settings_.params.set(u"imageDPI", u"");
  EXPECT_TRUE(settings_.copyNameValuesToPrinterDriverConfigFile());
  std::string expected;
  for (const char c : std::string("watermarkFontSize=&=&watermark=&=&watermarkFontName=&=&"
                                  "jpegImageQuality=&=&pdfTemplateOnTop=&=&pdfTemplate=&=&"
                                  "resolution=&=&")) {
    expected += {c, '\0'};
  }
  EXPECT_EQ(machine_.files.content(path), expected);

  for (const char* operation : {"systemDirectory", "openForWriting", "writeFile"}) {
    machine_.journal.failAlways(operation);
    const size_t closed = machine_.journal.count("closeFile");
    EXPECT_FALSE(settings_.copyNameValuesToPrinterDriverConfigFile()) << operation;
    const bool wasOpen = std::string_view(operation) == "writeFile";
    EXPECT_EQ(machine_.journal.count("closeFile") - closed, wasOpen ? 1u : 0u) << operation;
    machine_.journal.failAlways(operation, false);
  }
  EXPECT_EQ(simulated_.openHandles(), 0u);
}

}  // namespace
}  // namespace umpd
