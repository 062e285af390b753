#include "umpd/UserHive.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"

namespace umpd {
namespace {

const std::u16string record = u"DomainControllerData";
const std::u16string sidText = u"S-1-5-21-1-2-3";

Sid sidOf(std::vector<uint32_t> subAuthorities) {
  return {true, {0, 0, 0, 0, 0, 5}, std::move(subAuthorities)};
}

class UserHiveTest : public OnMachine {
 protected:
  UserHiveTest() {
    machine_.accounts.accounts = {{u"", u"pat", sidOf({21, 1, 2, 3})},
                                  {u"\\\\DC1", u"pat", sidOf({21, 9})}};
  }

  // Writes through the hive; tells which one it was.
  std::u16string hive() {
    const OwnedKey key = getHKCU(platform_, 2);
    if (!key) {
      return u"none";
    }
    if (key.get() == keyCurrentUser) {
      return u"current user";
    }
    platform_.registry.writeDword(key.get(), u"marker", 1);
    for (const auto* path : {u"HKCU", u"HKU\\S-1-5-21-1-2-3", u"HKU\\S-1-5-21-9"}) {
      if (machine_.registry.value(path, u"marker")) {
        return path;
      }
    }
    return u"unknown";
  }

  void setState(std::byte state, std::u16string name = {}) {
    auto& bytes = machine_.objects.holdElsewhere(SimulatedObject::Kind::mapping, record, 522).bytes;
    bytes[0] = state;
    name += u'\0';
    std::memcpy(bytes.data() + 2, name.data(), name.size() * 2);
  }
  std::byte state() { return machine_.objects.find(record)->bytes[0]; }
};

TEST_F(UserHiveTest, TheCallOpensTheThreadsUser) {
  machine_.registry.threadUserHive = u"HKU\\" + sidText;
  EXPECT_EQ(hive(), u"HKU\\S-1-5-21-1-2-3");
  EXPECT_EQ(machine_.journal.last("openCurrentUser"), u"6");
  machine_.registry.refusedAccess = 6;
  EXPECT_EQ(hive(), u"HKU\\S-1-5-21-1-2-3");
  EXPECT_EQ(machine_.journal.last("openCurrentUser"), u"2");
  machine_.registry.threadUserHive.clear();
  EXPECT_EQ(hive(), u"none");
  EXPECT_EQ(simulated_.openHandles(), 0u);
}

TEST_F(UserHiveTest, OlderSystemsGoByTheSid) {
  simulated_.become(WindowsRelease::windows98);
  EXPECT_EQ(hive(), u"current user");
  simulated_.become(WindowsRelease::nt4);
  EXPECT_EQ(hive(), u"none") << "the user's hive is not loaded";
  machine_.registry.makeKey(u"HKU\\" + sidText);
  EXPECT_EQ(hive(), u"HKU\\S-1-5-21-1-2-3");
  machine_.accounts.accounts.clear();
  EXPECT_EQ(hive(), u"none");
  machine_.registry.setValue(u"HKLM\\Software\\Quillpress", u"DisableDomainControllerLookup", 3,
                             {});
  EXPECT_EQ(hive(), u"current user");
  machine_.modules.present.erase(u"advapi32.dll");
  EXPECT_EQ(hive(), u"current user");
}

TEST_F(UserHiveTest, TheSidIsAskedOfTheDomainController) {
  machine_.accounts.controller = u"\\\\DC1";
  EXPECT_EQ(currentUserSidText(platform_), u"S-1-5-21-9");
  for (const auto* operation : {"userName", "accountSizes", "account"}) {
    machine_.journal.failAlways(operation);
    EXPECT_EQ(currentUserSidText(platform_), std::nullopt) << operation;
    machine_.journal.failAlways(operation, false);
  }
  simulated_.become(WindowsRelease::windows98);
  EXPECT_EQ(currentUserSidText(platform_), std::nullopt);
}

TEST_F(UserHiveTest, SidsReadAsText) {
  Sid sid = sidOf({21, 0xFFFFFFFF, 3, 4, 5});
  size_t capacity = 100;
  EXPECT_EQ(sidToText(platform_, sid, capacity), std::nullopt);
  EXPECT_EQ(capacity, 176u);
  EXPECT_EQ(machine_.journal.lastError, 122u);
  EXPECT_EQ(sidToText(platform_, sid, capacity), u"S-1-5-21-4294967295-3-4-5");
  sid.authority = {0, 0, 0xFE, 0, 1, 2};
  EXPECT_EQ(sidToText(platform_, sid, capacity), u"S-1-4261413122-21-4294967295-3-4-5");
  sid.authority = {0, 0xA, 0, 0, 0xB, 0xCD};
  sid.subAuthorities.clear();
  capacity = 56;
  EXPECT_EQ(sidToText(platform_, sid, capacity), u"S-1-0x000a00000bcd");
  sid.valid = false;
  EXPECT_EQ(sidToText(platform_, sid, capacity), std::nullopt);
}

TEST_F(UserHiveTest, TheControllerIsLookedUpOnceASession) {
  machine_.accounts.controller = u"\\\\DC1";
  EXPECT_EQ(getDomainControllerName(platform_), u"\\\\DC1");
  EXPECT_EQ(state(), std::byte{'r'});
  EXPECT_EQ(machine_.journal.last("createMapping"), u"Local\\DomainControllerData");
  platform_.process.reset();
  EXPECT_EQ(machine_.objects.find(record), nullptr) << "nobody holds it any more";
  setState(std::byte{'r'}, u"\\\\KNOWN");
  EXPECT_EQ(getDomainControllerName(platform_), u"\\\\KNOWN");
  EXPECT_EQ(getDomainControllerName(platform_), u"\\\\KNOWN");
  EXPECT_EQ(machine_.journal.count("domainController"), 1u);
  EXPECT_EQ(machine_.journal.count("mapView"), 2u) << "one for each process";
  EXPECT_EQ(machine_.clock.ticks, 1000000u);
}

TEST_F(UserHiveTest, ANameNeedsADomainTheCallAndTheRecord) {
  EXPECT_EQ(getDomainControllerName(platform_), u"");
  EXPECT_EQ(state(), std::byte{'r'});
  platform_.process.reset();
  machine_.accounts.controller = u"\\\\DC1";
  machine_.modules.present[u"netapi32.dll"].erase("NetApiBufferFree");
  EXPECT_EQ(getDomainControllerName(platform_), u"");
  EXPECT_EQ(state(), std::byte{0});
  machine_.modules.present.erase(u"netapi32.dll");
  EXPECT_EQ(getDomainControllerName(platform_), u"");
  EXPECT_EQ(state(), std::byte{0});
  machine_.modules.present[u"netapi32.dll"] = {"NetGetDCName", "NetApiBufferFree"};
  machine_.accounts.controller = std::u16string(300, u'd');
  platform_.process.reset();
  for (const auto* operation : {"mapView", "createMapping"}) {
    machine_.journal.failAlways(operation);
    EXPECT_EQ(getDomainControllerName(platform_), u"");
    EXPECT_EQ(simulated_.openHandles(), 0u) << operation;
    machine_.journal.failAlways(operation, false);
  }
  EXPECT_EQ(getDomainControllerName(platform_), std::u16string(259, u'd'));
}

TEST_F(UserHiveTest, AnotherProcessAtWorkIsWaitedForAMinute) {
  setState(std::byte{'w'});
  machine_.journal.before("sleep", [&] {
    if (machine_.journal.count("sleep") == 3) {
      setState(std::byte{'r'}, u"\\\\LATE");
    }
  });
  EXPECT_EQ(getDomainControllerName(platform_), u"\\\\LATE");
  EXPECT_EQ(machine_.clock.ticks, 1000000u + 3 * 876);

  setState(std::byte{'w'}, u"\\\\DEAD");
  machine_.clock.ticks = 0xFFFFFF00;
  EXPECT_EQ(getDomainControllerName(platform_), u"");
  EXPECT_EQ(state(), std::byte{'w'});
  EXPECT_EQ(machine_.clock.ticks, 0xFFFFFF00 + 69u * 876) << "the first look at 60000 or beyond";
}

}  // namespace
}  // namespace umpd
