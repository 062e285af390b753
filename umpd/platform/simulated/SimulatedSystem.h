// The small groups of the simulated machine: version, modules, accounts, clock, random numbers,
// messages, text and memory. Each is what a test makes of it, and keeps what it was told.
#pragma once

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "umpd/platform/Platform.h"
#include "umpd/platform/simulated/Journal.h"

class SimulatedVersion : public SystemVersion {
 public:
  explicit SimulatedVersion(Journal& shared) : journal(shared) {}
  std::optional<OsVersion> query() override;

  OsVersion version{6, 1, 2};

 private:
  Journal& journal;
};

class SimulatedModules : public Modules {
 public:
  explicit SimulatedModules(Journal& shared) : journal(shared) {}
  OwnedModule load(const std::u16string& name) override;
  FunctionAddress find(ModuleHandle module, const char* function) override;
  void close(ModuleHandle module) override;

  // What the machine has: modules in lower case, with their functions.
  std::map<std::u16string, std::set<std::string>> present;
  std::size_t openHandles() const { return loaded.size(); }

 private:
  Journal& journal;
  std::map<ModuleHandle, std::u16string> loaded;
};

class SimulatedAccounts : public Accounts {
 public:
  struct Account {
    std::u16string server;
    std::u16string user;
    Sid sid;
  };

  explicit SimulatedAccounts(Journal& shared) : journal(shared) {}
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
  Journal& journal;
};

class SimulatedClock : public Clock {
 public:
  explicit SimulatedClock(Journal& shared) : journal(shared) {}
  std::uint32_t tickCount() override;
  void sleep(std::uint32_t milliseconds) override;
  std::int64_t now() override;
  std::optional<CalendarTime> localTime(std::int64_t time) override;
  std::int32_t timeZoneBias() override;

  std::uint32_t ticks = 1000000;
  std::int64_t time = 1136214245;  // 2006-01-02T15:04:05Z
  std::int32_t bias = 0;
  std::int32_t daylightMinutes = 0;

 private:
  Journal& journal;
};

class SimulatedRandom : public Random {
 public:
  explicit SimulatedRandom(Journal& shared) : journal(shared) {}
  void seed(std::uint32_t value) override;
  std::uint32_t next() override;

  // Given out first; after them come the numbers that the seed gives.
  std::deque<std::uint32_t> planned;
  std::vector<std::uint32_t> seeds;

 private:
  Journal& journal;
  std::uint32_t state = 1;
};

class SimulatedMessages : public Messages {
 public:
  struct Box {
    std::u16string text;
    std::u16string caption;
    std::uint32_t flags;
    bool narrow;
  };

  explicit SimulatedMessages(Journal& shared) : journal(shared) {}
  void box(const std::u16string& text, const std::u16string& caption, std::uint32_t flags) override;
  void narrowBox(const std::string& text, const std::string& caption, std::uint32_t flags) override;
  void debug(const std::u16string& text) override;
  void narrowDebug(const std::string& text) override;
  std::uint32_t lastError() override { return journal.lastError; }
  void setLastError(std::uint32_t error) override { journal.lastError = error; }
  std::optional<std::u16string> errorText(std::uint32_t error) override;

  std::vector<Box> boxes;
  std::vector<std::u16string> debugOutput;
  std::map<std::uint32_t, std::u16string> errorTexts{
      {0, u"Success.\r\n"},
      {2, u"File not found.\r\n"},
      {Journal::deviceNotFunctioning, u"Device not functioning.\r\n"}};

 private:
  Journal& journal;
};

// The default code page is Latin-1: a character beyond it becomes a question mark.
class SimulatedText : public TextConversion {
 public:
  explicit SimulatedText(Journal& shared) : journal(shared) {}
  std::u16string widen(const std::string& text) override;
  std::string narrow(const std::u16string& text) override;
  bool toUtf8(const std::u16string& text, std::span<char> buffer) override;

 private:
  Journal& journal;
};

// Real memory: an address has to hold in earnest.
class SimulatedMemory : public LowMemory {
 public:
  explicit SimulatedMemory(Journal& shared) : journal(shared) {}
  OwnedLowBlock allocate(std::size_t size) override;
  void close(std::byte* block) override;

  std::size_t openBlocks() const { return sizes.size(); }

 private:
  Journal& journal;
  std::map<std::byte*, std::size_t> sizes;
};
