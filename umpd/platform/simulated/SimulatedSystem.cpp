// Each group does what its contract says with what a test has put there. Numbers, texts and errors
// are those of the system, where a caller can see them.
#include "umpd/platform/simulated/SimulatedSystem.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "umpd/platform/LowPages.h"
#include "umpd/platform/WideText.h"

namespace umpd {
namespace {

constexpr uint32_t errorModuleNotFound = 126;
constexpr uint32_t errorProcedureNotFound = 127;
constexpr uint32_t errorNoneMapped = 1332;

std::u16string wide(const std::string& text) {
  std::u16string result;
  for (const char c : text) {
    result += static_cast<char16_t>(static_cast<unsigned char>(c));
  }
  return result;
}

bool isHighSurrogate(char16_t c) {
  return c >= 0xD800 && c < 0xDC00;
}
bool isLowSurrogate(char16_t c) {
  return c >= 0xDC00 && c < 0xE000;
}

// One character in one to four bytes.
std::string utf8(char32_t c) {
  const auto byte = [](char32_t value) { return static_cast<char>(value); };
  const auto tail = [&](unsigned shift) { return byte(0x80 | ((c >> shift) & 0x3F)); };
  if (c < 0x80) {
    return {byte(c)};
  }
  if (c < 0x800) {
    return {byte(0xC0 | c >> 6), tail(0)};
  }
  if (c < 0x10000) {
    return {byte(0xE0 | c >> 12), tail(6), tail(0)};
  }
  return {byte(0xF0 | c >> 18), tail(12), tail(6), tail(0)};
}

}  // namespace

std::optional<OsVersion> SimulatedVersion::query() {
  if (!journal_.may("version")) {
    return std::nullopt;
  }
  return version;
}

OwnedModule SimulatedModules::load(const std::u16string& name) {
  if (!journal_.may("loadModule", name)) {
    return {};
  }
  if (present.count(foldCase(name)) == 0) {
    journal_.fails(errorModuleNotFound);
    return {};
  }
  const ModuleHandle handle{journal_.newHandle()};
  loaded_[handle] = foldCase(name);
  return OwnedModule(*this, handle);
}

// An address is a number that nobody calls: operations that take one know what to do.
FunctionAddress SimulatedModules::find(ModuleHandle module, const char* function) {
  if (!journal_.mayReturn("findFunction")) {
    return {};
  }
  if (const auto loaded = loaded_.find(module); loaded != loaded_.end()) {
    const auto functions = present.find(loaded->second);
    if (functions != present.end() && functions->second.count(std::string_view(function)) != 0) {
      return FunctionAddress{journal_.newHandle()};
    }
  }
  journal_.fails(errorProcedureNotFound);
  return {};
}

void SimulatedModules::close(ModuleHandle module) {
  journal_.noteReturn("freeModule");
  loaded_.erase(module);
}

std::optional<std::u16string> SimulatedAccounts::userName() {
  if (!journal_.may("userName")) {
    return std::nullopt;
  }
  return user;
}

// An account is known to the server that it was set up on; the empty name is this machine.
const SimulatedAccounts::Account* SimulatedAccounts::find(const std::u16string& server,
                                                          const std::u16string& name) const {
  const auto found = std::find_if(accounts.begin(), accounts.end(), [&](const Account& each) {
    return equalsIgnoringCase(each.server, server) && equalsIgnoringCase(each.user, name);
  });
  return found == accounts.end() ? nullptr : &*found;
}

// An identifier has 8 bytes and 4 for each of its parts. The domain's name has any length.
AccountSizes SimulatedAccounts::accountSizes(const std::u16string& server,
                                             const std::u16string& name) {
  if (!journal_.may("accountSizes", server + u'\\' + name)) {
    return {};
  }
  if (const Account* found = find(server, name)) {
    return {static_cast<uint32_t>(8 + 4 * found->sid.subAuthorities.size()), 16};
  }
  journal_.fails(errorNoneMapped);
  return {};
}

std::optional<Sid> SimulatedAccounts::account(const std::u16string& server,
                                              const std::u16string& name, AccountSizes sizes) {
  if (!journal_.may("account", server + u'\\' + name)) {
    return std::nullopt;
  }
  const Account* found = find(server, name);
  if (!found || sizes.sid < 8 + 4 * found->sid.subAuthorities.size()) {
    journal_.fails(found ? errorInsufficientBuffer : errorNoneMapped);
    return std::nullopt;
  }
  return found->sid;
}

std::optional<std::u16string> SimulatedAccounts::domainController(FunctionAddress /*call*/,
                                                                  FunctionAddress /*release*/) {
  if (!journal_.may("domainController")) {
    return std::nullopt;
  }
  return controller;
}

uint32_t SimulatedClock::tickCount() {
  journal_.note("tickCount");
  return ticks;
}

// Time passes only here and in waits.
void SimulatedClock::sleep(uint32_t milliseconds) {
  ticks += milliseconds;
  journal_.note("sleep", decimalText(milliseconds));
}

int64_t SimulatedClock::now() {
  journal_.note("now");
  return time;
}

// Daylight saving, if a test sets it, is in force all the year.
std::optional<CalendarTime> SimulatedClock::localTime(int64_t moment) {
  if (!journal_.may("localTime")) {
    return std::nullopt;
  }
  using namespace std::chrono;
  const sys_seconds local{seconds(moment + (int64_t{daylightMinutes} - bias) * 60)};
  const sys_days day = floor<days>(local);
  const year_month_day date(day);
  const hh_mm_ss clock(local - day);
  return CalendarTime{static_cast<int>(date.year()),
                      static_cast<int>(static_cast<unsigned>(date.month())),
                      static_cast<int>(static_cast<unsigned>(date.day())),
                      static_cast<int>(clock.hours().count()),
                      static_cast<int>(clock.minutes().count()),
                      static_cast<int>(clock.seconds().count())};
}

int32_t SimulatedClock::timeZoneBias() {
  journal_.note("timeZoneBias");
  return bias;
}

void SimulatedRandom::seed(uint32_t value) {
  journal_.note("seed", decimalText(value));
  seeds.push_back(value);
  state_ = value;
}

// The generator of the system's C runtime.
uint32_t SimulatedRandom::next() {
  journal_.note("random");
  if (!planned.empty()) {
    const uint32_t value = planned.front();
    planned.pop_front();
    return value;
  }
  state_ = state_ * 214013 + 2531011;
  return (state_ >> 16) & 0x7FFF;
}

void SimulatedMessages::box(const std::u16string& text, const std::u16string& caption,
                            uint32_t flags) {
  journal_.note("box", caption);
  boxes.push_back({text, caption, flags, false});
}

void SimulatedMessages::narrowBox(const std::string& text, const std::string& caption,
                                  uint32_t flags) {
  journal_.note("box", wide(caption));
  boxes.push_back({wide(text), wide(caption), flags, true});
}

void SimulatedMessages::debug(const std::u16string& text) {
  journal_.note("debug", text);
  debugOutput.push_back(text);
}

void SimulatedMessages::narrowDebug(const std::string& text) {
  journal_.note("debug", wide(text));
  debugOutput.push_back(wide(text));
}

std::optional<std::u16string> SimulatedMessages::errorText(uint32_t error) {
  // The last error stays what it was, for it is what the caller reports.
  const uint32_t kept = journal_.lastError;
  const bool allowed = journal_.may("errorText", decimalText(error));
  journal_.lastError = kept;
  const auto found = errorTexts.find(error);
  if (!allowed || found == errorTexts.end()) {
    return std::nullopt;
  }
  return found->second;
}

std::u16string SimulatedText::widen(const std::string& text) {
  journal_.note("widen");
  return wide(text);
}

std::string SimulatedText::narrow(const std::u16string& text) {
  journal_.note("narrow");
  std::string result;
  for (const char16_t c : text) {
    result += c < 0x100 ? static_cast<char>(c) : '?';
  }
  return result;
}

// The terminator is written like a character, if there is room for it. Half a surrogate pair
// becomes the replacement character.
bool SimulatedText::toUtf8(const std::u16string& text, std::span<char> buffer) {
  if (!journal_.may("toUtf8")) {
    return false;
  }
  size_t used = 0;
  for (size_t i = 0; i <= text.size(); ++i) {
    char32_t c = i < text.size() ? text[i] : 0;
    if (isHighSurrogate(static_cast<char16_t>(c)) && i + 1 < text.size() &&
        isLowSurrogate(text[i + 1])) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
    } else if (c >= 0xD800 && c < 0xE000) {
      c = 0xFFFD;
    }
    const std::string bytes = utf8(c);
    if (used + bytes.size() > buffer.size()) {
      return journal_.fails(errorInsufficientBuffer);
    }
    std::copy(bytes.begin(), bytes.end(), buffer.begin() + static_cast<ptrdiff_t>(used));
    used += bytes.size();
  }
  return true;
}

OwnedLowBlock SimulatedMemory::allocate(size_t size) {
  if (!journal_.may("allocateLow")) {
    return {};
  }
  // The entry comes first: when there is no memory for it, there are no pages to give back.
  std::map<std::byte*, size_t> entry{{nullptr, size}};
  auto node = entry.extract(nullptr);
  std::byte* const block = allocateLowPages(size);
  if (block) {
    node.key() = block;
    sizes_.insert(std::move(node));
  }
  return OwnedLowBlock(*this, block);
}

void SimulatedMemory::close(std::byte* block) {
  journal_.noteReturn("freeLow");
  const auto found = sizes_.find(block);
  freeLowPages(block, found->second);
  sizes_.erase(found);
}

}  // namespace umpd
