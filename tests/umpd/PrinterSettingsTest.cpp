// How a job finds its printer's name and settings, and what a new printer key starts with.
#include "umpd/PrinterSettings.h"

#include <gtest/gtest.h>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"

namespace {

const std::u16string topKey = u"HKCU\\Software\\Quillpress\\";
const std::u16string defaultKey = topKey + u"Tarnwick Quillpress";
const std::u16string driverFolder = u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\";

class PrinterSettingsTest : public OnMachine {
 protected:
  std::string inMap(std::u16string_view key, const PrinterSettings* of = nullptr) {
    const std::u16string* value = (of ? *of : settings).params.find(key);
    return value ? narrow(*value) : "(none)";
  }
  SimulatedRegistry& registry = machine.registry;
  PrinterSettings settings{platform};
};

TEST_F(PrinterSettingsTest, TheDefaultNameIsTheStoredOneIfThereIsRoom) {
  const std::u16string builtIn(defaultPrinterName), fits(259, u'p'), tooLong(260, u'p');
  EXPECT_EQ(PrinterSettings(platform).printerName, builtIn);
  for (const auto& [stored, name] :
       {std::pair(std::u16string(), builtIn), {fits, fits}, {tooLong, builtIn}}) {
    registry.setText(topKey, u"printerName", stored);
    EXPECT_EQ(PrinterSettings(platform).printerName, name);
  }
}

TEST_F(PrinterSettingsTest, NamesArePlainOrInPortForm) {
  machine.spooler.add(u"Foreign", u"\\\\server\\laser", u"Another Driver");
  machine.spooler.add(u"Office", u"\\\\server\\laser");
  settings.setPrinterName(u",,server,laser");
  EXPECT_EQ(settings.printerName, u"Office");
  EXPECT_EQ(settings.effectiveName(), u",,server,laser");
  settings.setPrinterName(u"\\\\nobody");
  EXPECT_EQ(settings.printerName, u"");
  EXPECT_EQ(settings.effectiveName(), u"\\\\nobody");
  settings.params.set(u"passthru", u"1");
  settings.setPrinterName(u"Plain");
  EXPECT_EQ(settings.effectiveName(), u"Plain");
  EXPECT_EQ(inMap(u"passthru"), "1");
  settings.setPrinterName(u"\\\\nobody");
  settings.setPrinterName({});
  EXPECT_EQ(settings.effectiveName(), u"Tarnwick Quillpress");
  EXPECT_EQ(inMap(u"passthru"), "(none)");
}

TEST_F(PrinterSettingsTest, LoadsNumbersAndTextsAndNothingElse) {
  registry.setDword(defaultKey, u"big", 0xFFFFFFFF);
  registry.setText(defaultKey, u"text", u"a b");
  registry.setText(defaultKey, u"empty", u"");
  registry.setDword(defaultKey, u"", 5);
  registry.setValue(defaultKey, u"expandable", 2, std::vector<std::byte>(4));
  settings.params.set(u"stale", u"1");
  EXPECT_TRUE(settings.loadSettings());
  EXPECT_EQ(settings.params.pairs().size(), 3u);
  EXPECT_EQ(inMap(u"BIG"), "4294967295");
  EXPECT_EQ(inMap(u"text"), "a b");
  EXPECT_EQ(inMap(u"empty"), "");
  EXPECT_EQ(machine.journal.count("writeValue"), 0u);  // the key stood
}

TEST_F(PrinterSettingsTest, WithoutARegistryTheMapStays) {
  registry.makeKey(defaultKey);
  for (const char* operation : {"openCurrentUser", "createKey", "writeValue", "queryInfo"}) {
    machine.journal.failAlways(operation);
    PrinterSettings each(platform);
    EXPECT_EQ(each.printerName, u"Tarnwick Quillpress");
    each.params.set(u"kept", u"1");
    const bool readable = std::string_view(operation) == "writeValue";
    EXPECT_EQ(each.loadSettings(), readable) << operation;
    EXPECT_EQ(inMap(u"kept", &each), readable ? "(none)" : "1");
    const bool writable = std::string_view(operation) == "queryInfo";
    EXPECT_EQ(each.setRegistryString(u"DocName", u"x"), writable);
    EXPECT_EQ(inMap(u"DocName", &each), writable ? "x" : "(none)");
    machine.journal.failAlways(operation, false);
  }
  EXPECT_EQ(simulated.openHandles(), 0u);
}

TEST_F(PrinterSettingsTest, ANewKeyGetsTheDefaultsAndTheInstallationsOverThem) {
  const std::u16string config = driverFolder + u"tqpconf.ini";
  machine.profiles.setSection(config, u"init", {u"imageDPI=600", u"resIndex=0x7"});
  machine.profiles.setSection(config, u",,srv,Office", {u"imageDPI=1200"});
  settings.setPrinterName(u"\\\\srv\\Office");
  EXPECT_TRUE(settings.loadSettings());
  EXPECT_EQ(registry.shown(topKey, u"printerName"), u"\\\\srv\\Office");
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
  EXPECT_EQ(settings.params.pairs().size(), std::size(expected));
  for (const auto& [name, value] : expected) {
    EXPECT_EQ(narrow(registry.shown(key, name)), value);
    EXPECT_EQ(inMap(name), value);
  }
  EXPECT_EQ(registry.value(key, u"imageDPI")->type, registryDword);
}

TEST_F(PrinterSettingsTest, DefaultsDoWithoutFoldersAndWithoutEachOther) {
  machine.files.folders.clear();
  // With the viewer's name and arguments this comes to 260 characters.
  machine.spooler.driverDirectoryPath = u"C:\\" + std::u16string(260 - 11 - 24 - 6, u'd');
  machine.journal.before("writeValue", [this] {
    machine.journal.failAlways("writeValue", machine.journal.last("writeValue") == u"NextAction");
  });
  settings.loadSettings();
  EXPECT_EQ(inMap(u"NextAction"), "(none)");
  EXPECT_EQ(inMap(u"DefaultSaveDir"), "c:\\");
  EXPECT_EQ(inMap(u"LastDir"), "c:\\");
  EXPECT_EQ(inMap(u"ExecCmdLine"), "(none)");

  platform.process.driverDirectory.clear();
  machine.spooler.driverDirectoryPath.pop_back();
  settings.writeDefaultSettings();
  EXPECT_EQ(inMap(u"ExecCmdLine").size(), 259u);
  EXPECT_EQ(inMap(u"printerName"), "Tarnwick Quillpress");
}

TEST_F(PrinterSettingsTest, TextsAreHeldToTheBufferAndDefaultsAreNot) {
  settings.params.set(u"four", u"abcd");
  settings.params.set(u"none", u"");
  const auto read = [&](std::u16string_view key, std::size_t size, const char16_t* fallback) {
    char16_t buffer[20] = u"untouched";
    settings.getSettingString(key, buffer, size, fallback);
    return narrow(buffer);
  };
  EXPECT_EQ(read(u"FOUR", 5, u"x"), "abcd");
  EXPECT_EQ(read(u"four", 4, u"default"), "default");
  EXPECT_EQ(read(u"none", 5, u"x"), "x");
  EXPECT_EQ(read(u"missing", 5, nullptr), "untouched");
}

TEST_F(PrinterSettingsTest, TheDriversFileHoldsItsNineSettings) {
  const std::u16string path = u"C:\\windows\\system32\\tqpcfg.1";
  machine.files.addFile(path, "what stood there before");
  EXPECT_TRUE(settings.copyNameValuesToPrinterDriverConfigFile());
  EXPECT_EQ(machine.files.content(path), "");

  for (const char16_t* key :
       {u"watermarkFontSize", u"watermark", u"watermarkFontName", u"jpegImageQuality", u"imageDPI",
        u"pdfTemplateOnTop", u"pdfTemplate", u"printerData4", u"resolution", u"resIndex"})
    settings.params.set(key, u"&=");
  settings.params.set(u"imageDPI", u"");
  EXPECT_TRUE(settings.copyNameValuesToPrinterDriverConfigFile());
  std::string expected;
  for (const char c : std::string("watermarkFontSize=&=&watermark=&=&watermarkFontName=&=&"
                                  "jpegImageQuality=&=&pdfTemplateOnTop=&=&pdfTemplate=&=&"
                                  "resolution=&=&"))
    expected += {c, '\0'};
  EXPECT_EQ(machine.files.content(path), expected);

  for (const char* operation : {"systemDirectory", "openForWriting", "writeFile"}) {
    machine.journal.failAlways(operation);
    EXPECT_FALSE(settings.copyNameValuesToPrinterDriverConfigFile()) << operation;
    machine.journal.failAlways(operation, false);
  }
  EXPECT_EQ(simulated.openHandles(), 0u);
}

}  // namespace
