// Three ways to a user's hive, the first that the system has: the predefined key on Windows 9x; a
// call that opens the hive of the thread's user; on NT 4 the key of the user's SID below
// HKEY_USERS.
// The SID may have to be asked of the domain's controller, whose name takes seconds to find. One
// process of the session finds it and leaves it in a shared record for all of them.
#include "umpd/UserHive.h"

#include <algorithm>
#include <cstring>
#include <mutex>

#include "umpd/ProductNames.h"
#include "umpd/SecurityAttributesHolder.h"
#include "umpd/Trace.h"
#include "umpd/platform/WideText.h"

namespace umpd {
namespace {

constexpr size_t textCapacity = 260;
constexpr uint32_t createSubkeyRight = 4;
constexpr uint32_t machineReadAccess = 0x20019;

// The record that the session's processes share: a state byte, a byte of padding, and the name.
constexpr uint32_t recordSize = 522;
constexpr size_t nameOffset = 2;
constexpr size_t nameCapacity = 260;
constexpr std::byte stateUnknown{0};
constexpr std::byte stateWorking{'w'};
constexpr std::byte stateReady{'r'};

constexpr uint32_t lookInterval = 876;
constexpr uint32_t longestWait = 60000;

// For sites where the look-up hangs: the value's presence counts, whatever it is.
bool isLookupDisabled(Registry& registry) {
  const CreatedKey product =
      registry.createKey(keyLocalMachine, std::u16string(productKey), machineReadAccess);
  return product.key && registry.hasValue(product.key.get(), u"DisableDomainControllerLookup");
}

// The right to create keys is asked for too, and done without if it is refused.
OwnedKey openHiveByCall(Registry& registry, FunctionAddress call, uint32_t access) {
  OwnedKey hive = registry.openCurrentUser(call, access | createSubkeyRight);
  if (!hive) {
    hive = registry.openCurrentUser(call, access);
  }
  if (!hive) {
    traceMessage("getHKCU - 2 regOpenHKCU failed \n");
  }
  return hive;
}

OwnedKey openHiveBySid(Platform& platform, uint32_t access) {
  const auto sid = currentUserSidText(platform);
  if (!sid) {
    return {};
  }
  OwnedKey hive = platform.registry.openKey(keyUsers, *sid, access);
  if (!hive) {
    traceMessage("getHKCU - 1 RegOpenKeyEx failed \n");
  }
  return hive;
}

// A name that fills its field has no terminator.
void writeName(std::byte* record, std::u16string_view name) {
  std::u16string field(name.substr(0, nameCapacity));
  if (field.size() < nameCapacity) {
    field += u'\0';
  }
  std::memcpy(record + nameOffset, field.data(), field.size() * sizeof(char16_t));
}

// The record's field holds 260 characters, the reader's 259 and a terminator: a name that fills the
// first loses its end.
std::u16string readName(const std::byte* record) {
  std::u16string field(nameCapacity, u'\0');
  std::memcpy(field.data(), record + nameOffset, nameCapacity * sizeof(char16_t));
  return field.substr(0, std::min(field.find(u'\0'), textCapacity - 1));
}

// False if this machine cannot ask. One without a domain can, and its answer is the empty name.
bool queryDomainController(Platform& platform, std::byte* record) {
  const OwnedModule library = platform.modules.load(u"Netapi32.dll");
  if (!library) {
    return false;
  }
  const FunctionAddress call = platform.modules.find(library.get(), "NetGetDCName");
  const FunctionAddress release = platform.modules.find(library.get(), "NetApiBufferFree");
  if (call == FunctionAddress{} || release == FunctionAddress{}) {
    return false;
  }
  // A call that fails has an answer too, the empty name.
  writeName(record, {});
  if (const auto name = platform.accounts.domainController(call, release)) {
    writeName(record, *name);
  }
  return true;
}

// The shared record, mapped on first use for as long as the process lives; null on failure.
std::byte* domainControllerRecord(Platform& platform) {
  OwnedObject& mapping = platform.process.domainControllerMapping;
  OwnedView& view = platform.process.domainControllerView;
  if (view) {
    return view.get();
  }
  const std::u16string name = std::u16string(platform.version.isWin2kOrLater() ? u"Local\\" : u"") +
                              u"DomainControllerData";
  mapping = platform.objects.openMapping(name);
  if (!mapping) {
    SecurityAttributesHolder security;
    mapping = platform.objects.createMapping(buildSecurityAttributes(platform, security), name,
                                             recordSize);
  }
  if (mapping) {
    view = platform.objects.mapView(mapping.get(), recordSize);
  }
  if (!view) {
    // Tried anew with the next question: what was in the way may be gone.
    mapping.reset();
  }
  return view.get();
}

// A process that died at work leaves its mark for good: everybody waits a minute, once each.
void waitForOtherProcess(Clock& clock, const std::byte* record) {
  const uint32_t start = clock.tickCount();
  while (record[0] == stateWorking && clock.tickCount() - start < longestWait) {
    traceMessage("Waiting for domain name cache\n");
    clock.sleep(lookInterval);
  }
}

void appendHex(std::u16string& text, uint8_t value) {
  constexpr std::u16string_view digits = u"0123456789abcdef";
  text += digits[value >> 4];
  text += digits[value & 15];
}

}  // namespace

// A caller closes what it gets; closing a predefined key does nothing.
OwnedKey getHKCU(Platform& platform, uint32_t access) {
  const auto currentUser = [&] { return OwnedKey(platform.registry, keyCurrentUser); };
  if (platform.version.isWin9x()) {
    return currentUser();
  }
  const OwnedModule library = platform.modules.load(u"Advapi32.DLL");
  if (!library) {
    return currentUser();
  }
  const FunctionAddress call = platform.modules.find(library.get(), "RegOpenCurrentUser");
  if (call != FunctionAddress{}) {
    return openHiveByCall(platform.registry, call, access);
  }
  if (isLookupDisabled(platform.registry)) {
    return currentUser();
  }
  return openHiveBySid(platform, access);
}

std::optional<std::u16string> currentUserSidText(Platform& platform) {
  if (platform.version.isWin9x()) {
    return std::nullopt;
  }
  const auto user = platform.accounts.userName();
  if (!user) {
    return std::nullopt;
  }
  const std::u16string server = getDomainControllerName(platform);
  const AccountSizes sizes = platform.accounts.accountSizes(server, *user);
  if (sizes.sid == 0 || sizes.domain == 0) {
    return std::nullopt;
  }
  const auto sid = platform.accounts.account(server, *user, sizes);
  if (!sid) {
    return std::nullopt;
  }
  size_t capacity = textCapacity;
  return sidToText(platform, *sid, capacity);
}

std::optional<std::u16string> sidToText(Platform& platform, const Sid& sid, size_t& capacity) {
  if (!sid.valid) {
    return std::nullopt;
  }
  const size_t needed = 24 * sid.subAuthorities.size() + 56;
  if (capacity < needed) {
    capacity = needed;
    platform.messages.setLastError(errorInsufficientBuffer);
    return std::nullopt;
  }
  std::u16string text = u"S-1-";
  // The systems' own authorities have 0 in the two top bytes, and the rest is one number.
  if (sid.authority[0] != 0 || sid.authority[1] != 0) {
    text += u"0x";
    for (const uint8_t each : sid.authority) {
      appendHex(text, each);
    }
  } else {
    uint32_t value = 0;
    for (size_t i = 2; i < sid.authority.size(); ++i) {
      value = value << 8 | sid.authority[i];
    }
    text += decimalText(value);
  }
  for (const uint32_t each : sid.subAuthorities) {
    text += u'-' + decimalText(each);
  }
  return text;
}

std::u16string getDomainControllerName(Platform& platform) {
  const std::lock_guard lock(platform.process.domainControllerMutex);
  std::byte* const record = domainControllerRecord(platform);
  if (!record) {
    return {};
  }
  // After a wait the other process's answer is taken, and not asked for again if there is none.
  if (record[0] == stateWorking) {
    waitForOtherProcess(platform.clock, record);
  } else if (record[0] != stateReady) {
    record[0] = stateWorking;
    traceMessage("Working out domain controller name\n");
    record[0] = queryDomainController(platform, record) ? stateReady : stateUnknown;
  }
  if (record[0] != stateReady) {
    return {};
  }
  return readName(record);
}

}  // namespace umpd
