// How a job finds its printer's name and settings, and what a new printer key starts with.
#include "umpd/PrinterSettings.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/umpd/Wide.h"
#include "umpd/ConfigStore.h"
#include "umpd/platform/simulated/SimulatedPlatform.h"

namespace {

const std::u16string topKey = u"HKCU\\Software\\Quillpress";
const std::u16string defaultKey = topKey + u"\\Tarnwick Quillpress";
const std::u16string driverFolder = u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\";

class PrinterSettingsTest : public testing::Test {
 protected:
  std::string stored(const std::u16string& key, const std::u16string& name) {
    return narrow(registry.shown(key, name));
  }
  std::string inMap(const PrinterSettings& settings, std::string_view key) {
    const std::u16string* value = settings.params.find(wide(key));
    return value ? narrow(*value) : "(none)";
  }

  SimulatedPlatform simulated;
  SimulatedParts& machine = simulated.machine;
  SimulatedRegistry& registry = machine.registry;
};

TEST_F(PrinterSettingsTest, TheDefaultNameIsTheStoredOne) {
  EXPECT_EQ(PrinterSettings(simulated.platform).printerName, u"Tarnwick Quillpress");
  registry.setText(topKey, u"printerName", u"");
  EXPECT_EQ(PrinterSettings(simulated.platform).printerName, u"Tarnwick Quillpress");
  registry.setText(topKey, u"printerName", std::u16string(259, u'p'));
  EXPECT_EQ(PrinterSettings(simulated.platform).printerName, std::u16string(259, u'p'));
  registry.setText(topKey, u"printerName", std::u16string(260, u'p'));
  EXPECT_EQ(PrinterSettings(simulated.platform).printerName, u"Tarnwick Quillpress");
}

TEST_F(PrinterSettingsTest, APlainNameReplacesTheDefaultAndAnEmptyOneBringsItBack) {
  PrinterSettings settings(simulated.platform);
  settings.params.set(u"passthru", u"1");
  settings.setPrinterName(u"Office");
  EXPECT_EQ(settings.effectiveName(), u"Office");
  EXPECT_EQ(inMap(settings, "passthru"), "1");
  settings.setPrinterName({});
  EXPECT_EQ(settings.effectiveName(), u"Tarnwick Quillpress");
  EXPECT_EQ(inMap(settings, "passthru"), "(none)");
}

TEST_F(PrinterSettingsTest, APortFormIsLookedForAndNamesTheKey) {
  machine.spooler.add(u"Foreign", u"\\\\server\\laser", u"Another Driver");
  machine.spooler.add(u"Office", u"\\\\server\\laser");
  PrinterSettings settings(simulated.platform);
  settings.setPrinterName(u",,server,laser");
  EXPECT_EQ(settings.printerName, u"Office");
  EXPECT_EQ(settings.effectiveName(), u",,server,laser");
  EXPECT_TRUE(settings.setRegistryDword(u"passthru", 1));
  EXPECT_EQ(stored(topKey + u"\\,,server,laser", u"passthru"), "1");

  settings.setPrinterName(u"\\\\nobody");
  EXPECT_EQ(settings.printerName, u"");
  EXPECT_EQ(settings.effectiveName(), u"\\\\nobody");
  settings.setPrinterName(u"Plain");
  EXPECT_EQ(settings.effectiveName(), u"Plain");
}

TEST_F(PrinterSettingsTest, LoadsNumbersAndTextsAndNothingElse) {
  registry.setDword(defaultKey, u"big", 0xFFFFFFFF);
  registry.setText(defaultKey, u"text", u"a b");
  registry.setText(defaultKey, u"empty", u"");
  registry.setDword(defaultKey, u"", 5);
  registry.setValue(defaultKey, u"expandable", 2, std::vector<std::byte>(4));
  registry.setValue(defaultKey, u"binary", 3, std::vector<std::byte>(4));
  PrinterSettings settings(simulated.platform);
  settings.params.set(u"stale", u"1");
  EXPECT_TRUE(settings.loadSettings());
  ASSERT_EQ(settings.params.pairs().size(), 3u);
  EXPECT_EQ(inMap(settings, "BIG"), "4294967295");
  EXPECT_EQ(inMap(settings, "text"), "a b");
  EXPECT_EQ(inMap(settings, "empty"), "");
  // The key stands: nothing was written into it.
  EXPECT_EQ(machine.journal.count("writeValue"), 0u);
}

TEST_F(PrinterSettingsTest, WithoutARegistryTheMapStaysAndDefaultsApply) {
  registry.makeKey(defaultKey);
  for (const char* operation : {"openCurrentUser", "createKey", "queryInfo"}) {
    machine.journal.failAlways(operation);
    PrinterSettings settings(simulated.platform);
    EXPECT_EQ(settings.printerName, u"Tarnwick Quillpress");
    settings.params.set(u"kept", u"1");
    EXPECT_FALSE(settings.loadSettings()) << operation;
    EXPECT_EQ(settings.params.pairs().size(), 1u);
    EXPECT_EQ(settings.getSettingInt(u"showPrintStatusWin", 1), 1u);
    machine.journal.failAlways(operation, false);
  }
  machine.journal.failAlways("writeValue");
  PrinterSettings settings(simulated.platform);
  EXPECT_FALSE(settings.setRegistryString(u"DocName", u"x"));
  EXPECT_FALSE(settings.setRegistryDword(u"DoPrint", 0));
  EXPECT_TRUE(settings.params.pairs().empty());
  EXPECT_EQ(simulated.openHandles(), 0u);
}

TEST_F(PrinterSettingsTest, ANewKeyGetsTheDefaults) {
  PrinterSettings settings(simulated.platform);
  settings.setPrinterName(u"Office");
  EXPECT_TRUE(settings.loadSettings());
  EXPECT_EQ(stored(topKey, u"printerName"), "Office");
  const std::pair<const char*, std::string> expected[] = {
      {"NextAction", "3"},
      {"SaveFilenameAction", "3"},
      {"DefaultSaveDir", "C:\\Users\\pat\\AppData\\Local\\Quillpress"},
      {"LastDir", "C:\\Users\\pat\\Documents"},
      {"ExecCmdLine", narrow(driverFolder) + "tqpview.exe -nav=\"%s\" -docname=\"%s\""},
      {"DefaultSaveFilename", "tmp.pdf"},
      {"resIndex", "3"},
      {"jpegImageQuality", "75"},
      {"imageDPI", "300"},
      {"TrimNameChar", "45"},
      {"showDrellisButton", "0"}};
  for (const auto& [name, value] : expected) {
    EXPECT_EQ(stored(topKey + u"\\Office", wide(name)), value);
    EXPECT_EQ(inMap(settings, name), value);
  }
  EXPECT_EQ(settings.params.pairs().size(), std::size(expected));
  EXPECT_EQ(registry.value(topKey + u"\\Office", u"resIndex")->type, registryDword);
}

TEST_F(PrinterSettingsTest, TheInstallationsFileGoesOverTheDefaults) {
  machine.profiles.setSection(driverFolder + u"tqpconf.ini", u"init",
                              {u"imageDPI=600", u"resIndex=0x7"});
  machine.profiles.setSection(driverFolder + u"tqpconf.ini", u",,srv,Office", {u"imageDPI=1200"});
  PrinterSettings settings(simulated.platform);
  settings.setPrinterName(u"\\\\srv\\Office");
  EXPECT_TRUE(settings.loadSettings());
  const std::u16string key = topKey + u"\\,,srv,Office";
  EXPECT_EQ(registry.value(key, u"imageDPI")->type, registryDword);
  EXPECT_EQ(inMap(settings, "imageDPI"), "1200");
  EXPECT_EQ(registry.value(key, u"resIndex")->type, registryText);
  EXPECT_EQ(inMap(settings, "resIndex"), "0x7");
}

TEST_F(PrinterSettingsTest, DefaultsDoWithoutFolders) {
  machine.files.folders.clear();
  // "tqpview.exe" and its arguments come to one character too many.
  machine.spooler.driverDirectoryPath = u"C:\\" + std::u16string(260 - 11 - 24 - 6, u'd');
  PrinterSettings settings(simulated.platform);
  settings.loadSettings();
  EXPECT_EQ(inMap(settings, "DefaultSaveDir"), "c:\\");
  EXPECT_EQ(inMap(settings, "LastDir"), "c:\\");
  EXPECT_EQ(inMap(settings, "ExecCmdLine"), "(none)");

  simulated.platform.process.driverDirectory.clear();
  machine.spooler.driverDirectoryPath.pop_back();
  settings.setPrinterName(u"Another");
  settings.loadSettings();
  EXPECT_EQ(inMap(settings, "ExecCmdLine").size(), 259u);
}

TEST_F(PrinterSettingsTest, OneFailingDefaultDoesNotStopTheOthers) {
  machine.journal.before("writeValue", [this] {
    machine.journal.failAlways("writeValue",
                               machine.journal.last("writeValue") == u"SaveFilenameAction");
  });
  PrinterSettings settings(simulated.platform);
  EXPECT_TRUE(settings.loadSettings());
  EXPECT_EQ(inMap(settings, "SaveFilenameAction"), "(none)");
  EXPECT_EQ(inMap(settings, "showDrellisButton"), "0");
}

TEST_F(PrinterSettingsTest, NumbersAreWhatATextBeginsWith) {
  PrinterSettings settings(simulated.platform);
  const std::pair<const char*, std::uint32_t> cases[] = {
      {"12ab", 12}, {"ab", 0}, {"", 0}, {" \t7", 7}, {"-1", 0xFFFFFFFF}, {"4294967297", 1}};
  for (const auto& [text, value] : cases) {
    settings.params.set(u"PASSTHRU", wide(text));
    EXPECT_EQ(settings.getSettingInt(u"passthru", 9), value) << text;
  }
  EXPECT_EQ(settings.getSettingInt(u"other", 9), 9u);
}

TEST_F(PrinterSettingsTest, TextsAreHeldToTheBufferAndDefaultsAreNot) {
  PrinterSettings settings(simulated.platform);
  settings.params.set(u"four", u"abcd");
  settings.params.set(u"none", u"");
  const auto read = [&](std::u16string_view key, std::size_t size, const char16_t* fallback) {
    char16_t buffer[20] = u"untouched";
    settings.getSettingString(key, buffer, size, fallback);
    return narrow(buffer);
  };
  EXPECT_EQ(read(u"FOUR", 5, u"x"), "abcd");
  EXPECT_EQ(read(u"four", 4, u"default"), "default");
  EXPECT_EQ(read(u"none", 5, u""), "");
  EXPECT_EQ(read(u"none", 5, nullptr), "untouched");
  EXPECT_EQ(read(u"missing", 2, u"default"), "default");
}

TEST_F(PrinterSettingsTest, TheDriversFileHoldsItsNineSettings) {
  PrinterSettings settings(simulated.platform);
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
  const std::string content = machine.files.content(path).value_or("");
  std::string text;
  for (std::size_t i = 0; i < content.size(); i += 2) text += content[i];
  EXPECT_EQ(text,
            "watermarkFontSize=&=&watermark=&=&watermarkFontName=&=&jpegImageQuality=&=&"
            "pdfTemplateOnTop=&=&pdfTemplate=&=&resolution=&=&");
  EXPECT_EQ(content.size(), 2 * text.size());
  EXPECT_EQ(std::count(content.begin(), content.end(), '\0'),
            static_cast<std::ptrdiff_t>(text.size()));

  for (const char* operation : {"systemDirectory", "openForWriting", "writeFile"}) {
    machine.journal.failAlways(operation);
    EXPECT_FALSE(settings.copyNameValuesToPrinterDriverConfigFile()) << operation;
    machine.journal.failAlways(operation, false);
  }
  EXPECT_EQ(simulated.openHandles(), 0u);
}

}  // namespace
