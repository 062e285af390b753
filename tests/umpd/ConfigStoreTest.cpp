#include "umpd/ConfigStore.h"

#include "tests/umpd/OnMachine.h"
#include "umpd/WideText.h"

namespace {

const std::u16string top = u"HKCU\\Software\\Quillpress\\";
const std::u16string ini = u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\tqpconf.ini";

class ConfigStoreTest : public OnMachine {
 protected:
  ConfigStoreTest() { settings.printerName = u"\\\\server\\laser"; }

  std::u16string stored(const std::u16string& name) const {
    return machine.registry.shown(key, name);
  }

  PrinterSettings settings{platform};
  const std::u16string key = top + u",,server,laser";
};

TEST_F(ConfigStoreTest, ThePrintersNameMakesTheKeysPath) {
  settings.printerName.clear();
  EXPECT_TRUE(openPrinterKey(settings, keyRead));
  EXPECT_EQ(machine.journal.count("writeValue"), 0u);
  EXPECT_TRUE(machine.registry.hasKey(top));
  // The key's path holds 259 characters.
  settings.printerName = std::u16string(300, u'p');
  EXPECT_TRUE(openPrinterKey(settings, keyRead));
  EXPECT_TRUE(machine.registry.hasKey(top + std::u16string(259 - productKey.size(), u'p')));
}

TEST_F(ConfigStoreTest, SectionLinesGoToMapAndRegistry) {
  const std::vector<std::u16string> lines = {u"number=007", u"text=0x10", u"empty=",
                                             u"no value",   u"a=b=c",     u"number2=4294967297",
                                             u"spaced=1 2"};
  machine.profiles.setSection(ini, u",,SERVER,laser", lines);
  machine.registry.setText(key, u"empty", u"old");
  EXPECT_TRUE(mergeConfigSection(settings, false, std::nullopt));
  EXPECT_EQ(stored(u"number"), u"(none)") << "not writing";
  EXPECT_TRUE(mergeConfigSection(settings, true, std::nullopt));
  const struct {
    std::u16string name, inMap, inRegistry;
    std::uint32_t type;
  } cases[] = {{u"number", u"007", u"7", 4},
               {u"text", u"0x10", u"0x10", 1},
               {u"a", u"b=c", u"b=c", 1},
               {u"number2", u"4294967297", u"1", 4},
               {u"spaced", u"1 2", u"1 2", 1}};
  for (const auto& each : cases) {
    ASSERT_NE(settings.params.find(each.name), nullptr);
    EXPECT_EQ(*settings.params.find(each.name), each.inMap);
    EXPECT_EQ(stored(each.name), each.inRegistry);
    EXPECT_EQ(machine.registry.value(key, each.name)->type, each.type);
  }
  EXPECT_EQ(stored(u"empty"), u"old");
  EXPECT_EQ(settings.params.find(u"no value"), nullptr);
}

TEST_F(ConfigStoreTest, ASectionCountsByItsEntriesNotByTheirUse) {
  EXPECT_FALSE(mergeConfigSection(settings, true, u"absent"));
  EXPECT_FALSE(mergeConfigSection(settings, true, u""));
  machine.profiles.setSection(ini, u"useless", {u"nothing here"});
  EXPECT_TRUE(mergeConfigSection(settings, true, u"useless"));
  EXPECT_TRUE(settings.params.pairs().empty());
}

TEST_F(ConfigStoreTest, ASectionBeyondTheBufferLosesItsCutEntry) {
  // The buffer gives 4998 characters; the first line and its terminator take all of them but
  // `rest`.
  for (const std::size_t rest : {0u, 1u, 6u, 7u, 8u}) {
    settings.params.clear();
    machine.profiles.setSection(
        ini, u"init", {u"big=" + std::u16string(4998 - 5 - rest, u'x'), u"cut=me", u"lost=1"});
    EXPECT_TRUE(mergeConfigSection(settings, false, u"init"));
    EXPECT_EQ(settings.params.pairs().size(), rest >= 7 ? 2u : 1u) << rest;
  }
}

TEST_F(ConfigStoreTest, TheOverridePutsThePrintersSectionLast) {
  machine.profiles.setSection(ini, u",,server,laser", {u"both=printer"});
  const auto apply = [this](const char16_t* flag) {
    machine.profiles.setSection(ini, u"init", {u"both=common", u"one=1", flag});
    applyOverrideUserSettings(settings);
    return stored(u"both");
  };
  EXPECT_EQ(apply(u"overrideUserSettings=0"), u"(none)");
  EXPECT_EQ(apply(u"x=1"), u"(none)");
  EXPECT_EQ(apply(u"overrideUserSettings=2"), u"printer");
  EXPECT_EQ(stored(u"one"), u"1");
}

TEST_F(ConfigStoreTest, WithoutRoomForTheFilesNameThereIsNoFile) {
  // Directory, "\3\" and the file's name: 260 characters are too many.
  for (const std::size_t length : {245u, 246u}) {
    platform.process.driverDirectory.clear();
    machine.spooler.driverDirectoryPath = u"C:\\" + std::u16string(length - 3, u'd');
    machine.profiles.setSection(machine.spooler.driverDirectoryPath + u"\\3\\tqpconf.ini", u"init",
                                {u"a=b"});
    EXPECT_EQ(mergeConfigSection(settings, false, u"init"), length == 245);
  }
}

// Whatever fails on the way, nothing stays open, and the next job finds its settings.
TEST_F(ConfigStoreTest, EveryFailureIsQuiet) {
  for (std::size_t n = 1, calls = 1; n <= calls; ++n) {
    SimulatedPlatform fresh;
    fresh.machine.profiles.setSection(ini, u"init", {u"overrideUserSettings=1", u"a=b"});
    {
      PrinterSettings each(fresh.platform);
      fresh.machine.journal.clear();
      fresh.machine.journal.failCall(n);
      applyOverrideUserSettings(each);
      openPrinterKey(each, keyRead);
    }
    calls = fresh.machine.journal.calls().size();
    fresh.platform.process = {};  // gives back what the process keeps for its life
    EXPECT_EQ(fresh.openHandles(), 0u) << n;
    EXPECT_TRUE(fresh.machine.messages.boxes.empty()) << n;
  }
}

}  // namespace
