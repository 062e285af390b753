// The small groups of the simulated machine: version, modules, accounts, clock, random numbers,
// messages, text and memory. Each is what a test makes of it, and keeps what it was asked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "umpd/platform/Platform.h"
#include "umpd/platform/simulated/Journal.h"

namespace umpd {

class SimulatedVersion : public SystemVersion {
 public:
  explicit SimulatedVersion(Journal& journal) : journal_(journal) {}
  std::optional<OsVersion> query() override;

  OsVersion version{6, 1, 2};

 private:
  Journal& journal_;
};

class SimulatedModules : public Modules {
 public:
  explicit SimulatedModules(Journal& journal) : journal_(journal) {}
  OwnedModule load(const std::u16string& name) override;
  FunctionAddress find(ModuleHandle module, const char* function) override;
  void close(ModuleHandle module) override;

  // What the machine has: modules in lower case, with their functions.
  std::map<std::u16string, std::set<std::string, std::less<>>> present;
  size_t openHandles() const { return loaded_.size(); }

 private:
  Journal& journal_;
  std::map<ModuleHandle, std::u16string> loaded_;
};

class SimulatedAccounts : public Accounts {
 public:
  struct Account {
    std::u16string server;
    std::u16string user;
    Sid sid;
  };

  explicit SimulatedAccounts(Journal& journal) : journal_(journal) {}
  std::optional<std::u16string> userName() override;
  AccountSizes accountSizes(const std::u16string& server, const std::u16string& user) override;
  std::optional<Sid> account(const std::u16string& server, const std::u16string& user,
                             AccountSizes sizes) override;
  std::optional<std::u16string> domainController(FunctionAddress call,
                                                 FunctionAddress release) override;

  std::u16string user = u"pat";
  std::vector<Account> accounts;
  // None: this machine is in no domain, and the call fails.
  std::optional<std::u16string> controller;

 private:
  const Account* find(const std::u16string& server, const std::u16string& name) const;
  Journal& journal_;
};

class SimulatedClock : public Clock {
 public:
  explicit SimulatedClock(Journal& journal) : journal_(journal) {}
  uint32_t tickCount() override;
  void sleep(uint32_t milliseconds) override;
  int64_t now() override;
  std::optional<CalendarTime> localTime(int64_t time) override;
  int32_t timeZoneBias() override;

  uint32_t ticks = 1000000;
  int64_t time = 1136214245;  // 2006-01-02T15:04:05Z
  int32_t bias = 0;
  int32_t daylightMinutes = 0;

 private:
  Journal& journal_;
};

class SimulatedRandom : public Random {
 public:
  explicit SimulatedRandom(Journal& journal) : journal_(journal) {}
  void seed(uint32_t value) override;
  uint32_t next() override;

  // Returned first; after them come the numbers that follow from the seed.
  std::deque<uint32_t> planned;
  std::vector<uint32_t> seeds;

 private:
  Journal& journal_;
  uint32_t state_ = 1;
};

class SimulatedMessages : public Messages {
 public:
  struct Box {
    std::u16string text;
    std::u16string caption;
    uint32_t flags;
    bool narrow;
  };

  explicit SimulatedMessages(Journal& journal) : journal_(journal) {}
  void box(const std::u16string& text, const std::u16string& caption, uint32_t flags) override;
  void narrowBox(const std::string& text, const std::string& caption, uint32_t flags) override;
  void debug(const std::u16string& text) override;
  void narrowDebug(const std::string& text) override;
  uint32_t lastError() override { return journal_.lastError; }
  void setLastError(uint32_t error) override { journal_.lastError = error; }
  std::optional<std::u16string> errorText(uint32_t error) override;

  std::vector<Box> boxes;
  std::vector<std::u16string> debugOutput;
  std::map<uint32_t, std::u16string> errorTexts{
      {0, u"Success.\r\n"},
      {2, u"File not found.\r\n"},
      {Journal::deviceNotFunctioning, u"Device not functioning.\r\n"}};

 private:
  Journal& journal_;
};

// The default code page is Latin-1: a character beyond it becomes a question mark.
class SimulatedText : public TextConversion {
 public:
  explicit SimulatedText(Journal& journal) : journal_(journal) {}
  std::u16string widen(const std::string& text) override;
  std::string narrow(const std::u16string& text) override;
  bool toUtf8(const std::u16string& text, std::span<char> buffer) override;

 private:
  Journal& journal_;
};

// Real memory: records really live at these addresses.
class SimulatedMemory : public LowMemory {
 public:
  explicit SimulatedMemory(Journal& journal) : journal_(journal) {}
  OwnedLowBlock allocate(size_t size) override;
  void close(std::byte* block) override;

  size_t openBlocks() const { return sizes_.size(); }

 private:
  Journal& journal_;
  std::map<std::byte*, size_t> sizes_;
};

}  // namespace umpd
