#include "umpd/ConfigStore.h"

#include <cstddef>
#include <cstdint>
#include "tests/umpd/OnMachine.h"
#include "umpd/PrinterSettings.h"
#include "umpd/ProductNames.h"

namespace umpd {
namespace {

const std::u16string top = u"HKCU\\Software\\Quillpress\\";
const std::u16string ini = u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\tqpconf.ini";

class ConfigStoreTest : public OnMachine {
 protected:
  ConfigStoreTest() { settings_.printerName = u"\\\\server\\laser"; }

  std::u16string stored(const std::u16string& name) const {
    return machine_.registry.shown(key_, name);
  }

  PrinterSettings settings_{platform_};
  const std::u16string key_ = top + u",,server,laser";
};

TEST_F(ConfigStoreTest, ThePrintersNameMakesTheKeysPath) {
  settings_.printerName.clear();
  EXPECT_TRUE(settings_.openPrinterKey(keyRead));
  EXPECT_EQ(machine_.journal.count("writeValue"), 0u);
  EXPECT_TRUE(machine_.registry.hasKey(top));
  // The key's path holds 259 characters.
  settings_.printerName = std::u16string(300, u'p');
  EXPECT_TRUE(settings_.openPrinterKey(keyRead));
  EXPECT_TRUE(machine_.registry.hasKey(top + std::u16string(259 - productKey.size(), u'p')));
}

TEST_F(ConfigStoreTest, SectionLinesGoToMapAndRegistry) {
  const std::vector<std::u16string> lines = {u"number=007", u"text=0x10", u"empty=",
                                             u"no value",   u"a=b=c",     u"number2=4294967297",
                                             u"spaced=1 2"};
  machine_.profiles.setSection(ini, u",,SERVER,laser", lines);
  machine_.registry.setText(key_, u"empty", u"old");
  EXPECT_TRUE(settings_.mergeConfigSection(false, std::nullopt));
  EXPECT_EQ(stored(u"number"), u"(none)") << "not writing";
  EXPECT_TRUE(settings_.mergeConfigSection(true, std::nullopt));
  const struct {
    std::u16string name, inMap, inRegistry;
    uint32_t type;
  } cases[] = {{u"number", u"007", u"7", 4},
               {u"text", u"0x10", u"0x10", 1},
               {u"a", u"b=c", u"b=c", 1},
               {u"number2", u"4294967297", u"1", 4},
               {u"spaced", u"1 2", u"1 2", 1}};
  for (const auto& each : cases) {
    EXPECT_EQ(settings_.params.find(each.name), each.inMap);
    EXPECT_EQ(stored(each.name), each.inRegistry);
    EXPECT_EQ(machine_.registry.value(key_, each.name)->type, each.type);
  }
  EXPECT_EQ(stored(u"empty"), u"old");
  EXPECT_EQ(settings_.params.find(u"no value"), std::nullopt);
}

TEST_F(ConfigStoreTest, ASectionCountsByItsEntriesNotByTheirUse) {
  EXPECT_FALSE(settings_.mergeConfigSection(true, u"absent"));
  EXPECT_FALSE(settings_.mergeConfigSection(true, u""));
  machine_.profiles.setSection(ini, u"useless", {u"nothing here"});
  EXPECT_TRUE(settings_.mergeConfigSection(true, u"useless"));
  EXPECT_TRUE(settings_.params.pairs().empty());
}

TEST_F(ConfigStoreTest, ASectionBeyondTheBufferLosesItsCutEntry) {
  // The buffer gives 4998 characters; the first line and its terminator take all of them but
  // `rest`.
  for (const size_t rest : {0u, 1u, 6u, 7u, 8u}) {
    settings_.params.clear();
    machine_.profiles.setSection(
        ini, u"init", {u"big=" + std::u16string(4998 - 5 - rest, u'x'), u"cut=me", u"lost=1"});
    EXPECT_TRUE(settings_.mergeConfigSection(false, u"init"));
    EXPECT_EQ(settings_.params.pairs().size(), rest >= 7 ? 2u : 1u) << rest;
  }
}

TEST_F(ConfigStoreTest, TheOverridePutsThePrintersSectionLast) {
  machine_.profiles.setSection(ini, u",,server,laser", {u"both=printer"});
  const auto apply = [this](const char16_t* flag) {
    machine_.profiles.setSection(ini, u"init", {u"both=common", u"one=1", flag});
    settings_.applyOverrideUserSettings();
    return stored(u"both");
  };
  EXPECT_EQ(apply(u"overrideUserSettings=0"), u"(none)");
  EXPECT_EQ(apply(u"x=1"), u"(none)");
  EXPECT_EQ(apply(u"overrideUserSettings=2"), u"printer");
  EXPECT_EQ(stored(u"one"), u"1");
}

TEST_F(ConfigStoreTest, WithoutRoomForTheFilesNameThereIsNoFile) {
  // Directory, "\3\" and the file's name: 260 characters are too many.
  for (const size_t length : {245u, 246u}) {
    platform_.process.driverDirectory.clear();
    machine_.spooler.driverDirectoryPath = u"C:\\" + std::u16string(length - 3, u'd');
    machine_.profiles.setSection(machine_.spooler.driverDirectoryPath + u"\\3\\tqpconf.ini",
                                 u"init", {u"a=b"});
    EXPECT_EQ(settings_.mergeConfigSection(false, u"init"), length == 245);
  }
}

// Whatever fails on the way, nothing stays open, and the next job finds its settings.
TEST_F(ConfigStoreTest, EveryFailureIsQuiet) {
  for (size_t n = 1, calls = 1; n <= calls; ++n) {
    SimulatedPlatform fresh;
    fresh.machine.profiles.setSection(ini, u"init", {u"overrideUserSettings=1", u"a=b"});
    {
      PrinterSettings each(fresh.platform);
      fresh.machine.journal.clear();
      fresh.machine.journal.failCall(n);
      each.applyOverrideUserSettings();
      each.openPrinterKey(keyRead);
    }
    calls = fresh.machine.journal.calls().size();
    fresh.platform.process.reset();  // gives back what the process keeps for its life
    EXPECT_EQ(fresh.openHandles(), 0u) << n;
    EXPECT_TRUE(fresh.machine.messages.boxes.empty()) << n;
  }
}

}  // namespace
}  // namespace umpd
