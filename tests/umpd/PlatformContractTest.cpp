#include "tests/umpd/PlatformContract.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <set>

#include "umpd/PrinterInfo.h"
#include "umpd/SecurityAttributesHolder.h"
#include "umpd/platform/simulated/SimulatedPlatform.h"

namespace umpd {

ContractMachine::~ContractMachine() = default;

bool PlatformContract::writeFile(const std::u16string& path, const std::string& content) {
  const OwnedFile file(files_, files_.openForWriting(path, Disposition::createAlways));
  uint32_t written = 0;
  return files_.write(file.get(), std::as_bytes(std::span(content)), written) &&
         written == content.size();
}

FunctionAddress PlatformContract::function(const std::u16string& module, const std::string& name) {
  modules_.push_back(platform_.modules.load(module));
  return modules_.back() ? platform_.modules.find(modules_.back().get(), name.c_str())
                         : FunctionAddress{};
}

namespace {

constexpr uint32_t readWrite = 3;

class SimulatedContractMachine : public ContractMachine {
 public:
  explicit SimulatedContractMachine(std::unique_ptr<SimulatedPlatform> simulated)
      : ContractMachine(simulated->platform), machine_(std::move(simulated)) {
    folder = u"C:\\contract";
    printer = u"Contract Printer";
    port = u"LPT1:";
    key = u"Software\\Quillpress Contract";
    program = u"three.exe";
    SimulatedParts& parts = machine_->machine;
    parts.files.addDirectory(folder);
    parts.spooler.add(printer, port);
    parts.processes.programExitCode = 3;
    const Sid sid{true, {0, 0, 0, 0, 0, 5}, {21, 1, 2, 3, 1000}};
    parts.accounts.accounts = {{u"", parts.accounts.user, sid}};
  }

  void writeProfile(const std::u16string& path, const std::u16string& section,
                    const std::vector<std::u16string>& lines) override {
    machine_->machine.profiles.setSection(path, section, lines);
  }

  uint32_t startJob(const std::u16string& document) override {
    ++lastJob_;
    machine_->machine.spooler.find(printer)->jobs.push_back(
        {.jobId = lastJob_, .document = document, .statusText = {}, .position = lastJob_});
    return lastJob_;
  }

  PrinterHandle jobsHandle() override {
    SimulatedSpooler& spooler = machine_->machine.spooler;
    return spooler.handleOf(*spooler.find(printer));
  }

  void abandonMutex(const std::u16string& name) override {
    machine_->machine.objects.find(name)->abandoned = true;
  }

 private:
  std::unique_ptr<SimulatedPlatform> machine_;
  uint32_t lastJob_ = 0;
};

std::unique_ptr<ContractMachine> makeSimulatedMachine() {
  return std::make_unique<SimulatedContractMachine>(std::make_unique<SimulatedPlatform>());
}

INSTANTIATE_TEST_SUITE_P(Simulated, PlatformContract, testing::Values(makeSimulatedMachine));

TEST_P(PlatformContract, IsARecentSystem) {
  ASSERT_TRUE(platform_.version.query());
  EXPECT_TRUE(platform_.version.isWin2kOrLater());
  EXPECT_FALSE(platform_.version.isWin9x());
  EXPECT_FALSE(platform_.version.isNt4());
}

TEST_P(PlatformContract, ModulesAndFunctionsMayBeAbsent) {
  EXPECT_FALSE(platform_.modules.load(u"there is no such.dll"));
  EXPECT_EQ(platform_.messages.lastError(), 126u);
  const OwnedModule library = platform_.modules.load(u"ADVAPI32.dll");
  ASSERT_TRUE(library);
  EXPECT_EQ(platform_.modules.find(library.get(), "NoSuchFunction"), FunctionAddress{});
  EXPECT_EQ(platform_.messages.lastError(), 127u);
  EXPECT_NE(function(u"Netapi32.dll", "NetGetDCName"), FunctionAddress{});
  EXPECT_NE(function(u"Netapi32.dll", "NetApiBufferFree"), FunctionAddress{});
  EXPECT_NE(function(u"spoolss.dll", "RevertToPrinterSelf"), FunctionAddress{});
  EXPECT_NE(function(u"spoolss.dll", "ImpersonatePrinterClient"), FunctionAddress{});
  const auto call = function(u"ieframe.dll", "IEIsProtectedModeProcess");
  EXPECT_EQ(call != FunctionAddress{}, machine_->knowsProtectedMode);
  EXPECT_FALSE(call != FunctionAddress{} && platform_.processes.isProtectedMode(call));
}

TEST_P(PlatformContract, KeysAreCreatedOnceOnTheirWholeWay) {
  EXPECT_FALSE(registry_.openKey(keyCurrentUser, machine_->key, readWrite));
  const CreatedKey deep =
      registry_.createKey(keyCurrentUser, machine_->key + u"\\a\\b\\", readWrite);
  EXPECT_TRUE(deep.key);
  EXPECT_TRUE(deep.created);
  EXPECT_TRUE(registry_.openKey(keyCurrentUser, machine_->key + u"\\a", readWrite));
  const CreatedKey again =
      registry_.createKey(keyCurrentUser, machine_->key + u"\\A\\B", readWrite);
  EXPECT_TRUE(again.key);
  EXPECT_FALSE(again.created);
  const OwnedKey parent = registry_.openKey(keyCurrentUser, machine_->key + u"\\a", 1);
  EXPECT_TRUE(registry_.openKey(parent.get(), u"b", readWrite));
  EXPECT_FALSE(registry_.createKey(KeyHandle{}, machine_->key, readWrite).key);
  EXPECT_FALSE(registry_.createKey(parent.get(), std::u16string(257, u'k'), readWrite).key);
  EXPECT_TRUE(registry_.createKey(parent.get(), std::u16string(255, u'k'), readWrite).key);
}

TEST_P(PlatformContract, ValuesComeBackAsTheyWent) {
  const OwnedKey key = registry_.createKey(keyCurrentUser, machine_->key, readWrite).key;
  EXPECT_TRUE(registry_.writeText(key.get(), u"Text", u"\u00E4b"));
  EXPECT_TRUE(registry_.writeDword(key.get(), u"number", 0xFEDCBA98));
  EXPECT_TRUE(registry_.writeValue(key.get(), u"nothing", 3, {}));
  const RegistryValue text = registry_.readValue(key.get(), u"TEXT", 6);
  EXPECT_EQ(text.type, registryText);
  EXPECT_EQ(text.data.size(), 6u);
  EXPECT_EQ(text.text(), u"\u00E4b");
  const RegistryValue number = registry_.readValue(key.get(), u"number", 100);
  EXPECT_EQ(number.type, registryDword);
  EXPECT_EQ(number.dword(), 0xFEDCBA98);
  EXPECT_EQ(registry_.readValue(key.get(), u"Text", 5).answer, RegistryAnswer::failed);
  EXPECT_EQ(registry_.readValue(key.get(), u"Text", 0).answer, RegistryAnswer::failed);
  EXPECT_EQ(registry_.readValue(key.get(), u"nothing", 0).answer, RegistryAnswer::ok);
  EXPECT_EQ(registry_.readValue(key.get(), u"none", 100).answer, RegistryAnswer::absent);
  EXPECT_EQ(registry_.readValue(KeyHandle{}, u"Text", 100).answer, RegistryAnswer::failed);
  EXPECT_TRUE(registry_.hasValue(key.get(), u"Nothing"));
  EXPECT_FALSE(registry_.hasValue(key.get(), u"none"));
  EXPECT_TRUE(registry_.writeDword(key.get(), u"TEXT", 1));
  EXPECT_EQ(registry_.readValue(key.get(), u"Text", 4).type, registryDword);
}

TEST_P(PlatformContract, AHandleAllowsWhatItWasOpenedFor) {
  const OwnedKey reader = registry_.createKey(keyCurrentUser, machine_->key, 1).key;
  const OwnedKey writer = registry_.openKey(keyCurrentUser, machine_->key, 2);
  EXPECT_FALSE(registry_.writeDword(reader.get(), u"n", 1));
  EXPECT_TRUE(registry_.writeDword(writer.get(), u"n", 1));
  EXPECT_EQ(registry_.readValue(writer.get(), u"n", 4).answer, RegistryAnswer::failed);
  EXPECT_EQ(registry_.readValue(reader.get(), u"n", 4).answer, RegistryAnswer::ok);
  // The way to a further key does not lead over the handle's rights.
  EXPECT_TRUE(registry_.createKey(reader.get(), u"below", 2).key);
}

TEST_P(PlatformContract, ValuesAreWalkedInSizesThatTheKeyTells) {
  const OwnedKey key = registry_.createKey(keyCurrentUser, machine_->key, readWrite).key;
  registry_.writeText(key.get(), u"longest", u"1234");
  registry_.writeDword(key.get(), u"n", 7);
  const auto info = registry_.queryInfo(key.get());
  ASSERT_TRUE(info);
  EXPECT_EQ(info->valueCount, 2u);
  EXPECT_EQ(info->longestName, 7u);
  EXPECT_EQ(info->longestData, 10u);
  std::set<std::u16string> names;
  for (uint32_t i = 0; i < 2; ++i) {
    const RegistryValue value = registry_.enumerateValue(key.get(), i, 8, 10);
    EXPECT_TRUE(value.ok());
    names.insert(value.name);
    if (value.name != u"longest") {
      continue;
    }
    EXPECT_EQ(value.text(), u"1234");
    EXPECT_EQ(registry_.enumerateValue(key.get(), i, 7, 10).answer, RegistryAnswer::failed);
    EXPECT_EQ(registry_.enumerateValue(key.get(), i, 8, 9).answer, RegistryAnswer::failed);
  }
  EXPECT_EQ(names, (std::set<std::u16string>{u"longest", u"n"}));
  EXPECT_EQ(registry_.enumerateValue(key.get(), 2, 8, 10).answer, RegistryAnswer::absent);
}

TEST_P(PlatformContract, TheCallOpensTheHiveOfTheUser) {
  const auto call = function(u"Advapi32.DLL", "RegOpenCurrentUser");
  const OwnedKey hive = registry_.openCurrentUser(call, 2 | 4);
  ASSERT_TRUE(hive);
  EXPECT_TRUE(registry_.createKey(hive.get(), machine_->key, 2).created);
  EXPECT_TRUE(registry_.openKey(keyCurrentUser, machine_->key, 1));
}

TEST_P(PlatformContract, ProfileSectionsAreTextsWithTerminators) {
  const std::u16string path = inFolder(u"p.ini");
  ProfileFiles& profiles = platform_.profiles;
  EXPECT_EQ(profiles.readSection(path, u"one", 100), u"");
  EXPECT_EQ(profiles.readInt(path, u"one", u"n", 9), 9u);
  machine_->writeProfile(path, u"one", {u"first=1", u"n=12", u"empty=", u"last=x y"});
  const std::u16string all(u"first=1\0n=12\0empty=\0last=x y\0", 29);
  EXPECT_EQ(profiles.readSection(path, u"ONE", 100), all);
  EXPECT_EQ(profiles.readInt(path, u"One", u"N", 9), 12u);
  EXPECT_EQ(profiles.readInt(path, u"one", u"last", 9), 0u);
  EXPECT_EQ(profiles.readSection(path, u"two", 100), u"");
  // A buffer takes all with a terminator more, or else a part with two terminators. 30 characters
  // would do here, but systems differ on that one.
  EXPECT_EQ(profiles.readSection(path, u"one", 31), all);
  EXPECT_EQ(profiles.readSection(path, u"one", 29), all.substr(0, 27));
  EXPECT_EQ(profiles.readSection(path, u"one", 24), all.substr(0, 22));
}

TEST_P(PlatformContract, APrinterIsAskedForItsSizeThenForItself) {
  const DevMode mode = buildDevMode(machine_->printer);
  EXPECT_FALSE(spooler_.openPrinter(u"No such printer", mode, printerAccessUse));
  EXPECT_EQ(platform_.messages.lastError(), 1801u);
  const OwnedPrinter printer = spooler_.openPrinter(machine_->printer, mode, printerAccessUse);
  ASSERT_TRUE(printer);
  const SizeAnswer size = spooler_.printerSize(printer.get());
  EXPECT_FALSE(size.succeeded);
  EXPECT_EQ(size.error, errorInsufficientBuffer);
  const auto info = spooler_.printer(printer.get(), size.needed);
  ASSERT_TRUE(info);
  EXPECT_EQ(info->printerName, machine_->printer);
  EXPECT_EQ(info->portName, machine_->port);
  EXPECT_EQ(info->driverName, u"Tarnwick Quillpress");
  EXPECT_FALSE(spooler_.printer(printer.get(), size.needed - 1));
  EXPECT_EQ(platform_.messages.lastError(), errorInsufficientBuffer);

  const SizeAnswer none = spooler_.printerSize(PrinterHandle{0x1234567});
  EXPECT_FALSE(none.succeeded);
  EXPECT_EQ(none.needed, 0u);
  EXPECT_EQ(none.error, 6u);
  EXPECT_FALSE(spooler_.printer(PrinterHandle{0x1234567}, 1000));
}

TEST_P(PlatformContract, AllPrintersAreListed) {
  const uint32_t size = spooler_.printersSize();
  ASSERT_GT(size, 0u);
  const auto printers = spooler_.printers(size);
  ASSERT_TRUE(printers);
  EXPECT_EQ(std::ranges::count(*printers, machine_->printer, &PrinterInfo::printerName), 1);
  EXPECT_FALSE(spooler_.printers(size - 1));
}

TEST_P(PlatformContract, TheDriverDirectoryReadsTheSameInBothForms) {
  const uint32_t size = spooler_.driverDirectorySize(false);
  const auto directory = spooler_.driverDirectory(false, size);
  ASSERT_TRUE(directory);
  EXPECT_EQ(size, (directory->size() + 1) * 2);
  EXPECT_NE(directory->back(), u'\\');
  EXPECT_EQ(spooler_.driverDirectory(true, spooler_.driverDirectorySize(true)), directory);
  EXPECT_FALSE(spooler_.driverDirectory(false, size - 2));
}

TEST_P(PlatformContract, JobsAreCountedListedAndDeleted) {
  const OwnedPrinter printer =
      spooler_.openPrinter(machine_->printer, buildDevMode(machine_->printer), printerAccessUse);
  const SizeAnswer empty = spooler_.jobsSize(printer.get(), 0, 1);
  EXPECT_EQ(empty.succeeded, machine_->answersForJobs);
  EXPECT_EQ(empty.needed, 0u);
  const uint32_t job = machine_->startJob(u"Document \u00E9");
  EXPECT_EQ(spooler_.jobDocument(printer.get(), job), u"Document \u00E9");
  EXPECT_FALSE(spooler_.jobDocument(printer.get(), job + 1000));
  if (machine_->answersForJobs) {
    EXPECT_EQ(spooler_.printer(printer.get(), spooler_.printerSize(printer.get()).needed)->jobs,
              1u);
    const SizeAnswer size = spooler_.jobsSize(printer.get(), 0, 2);
    EXPECT_EQ(size.error, errorInsufficientBuffer);
    const auto jobs = spooler_.jobs(printer.get(), 0, 2, size.needed);
    ASSERT_TRUE(jobs);
    ASSERT_EQ(jobs->size(), 1u);
    EXPECT_EQ(jobs->front().jobId, job);
    EXPECT_FALSE(spooler_.jobs(printer.get(), 0, 2, size.needed - 1));
  }
  EXPECT_TRUE(spooler_.setJob(printer.get(), job, 5));
  EXPECT_EQ(spooler_.jobDocument(printer.get(), job).has_value(), !machine_->answersForJobs);
  EXPECT_FALSE(spooler_.setJob(PrinterHandle{0x1234567}, job, 5));
}

TEST_P(PlatformContract, APrinterCountsTheBytesItTakes) {
  machine_->startJob(u"Bytes");
  uint32_t written = 9;
  EXPECT_TRUE(
      spooler_.writePrinter(machine_->jobsHandle(), std::as_bytes(std::span("abc", 3)), written));
  EXPECT_EQ(written, 3u);
  EXPECT_FALSE(
      spooler_.writePrinter(PrinterHandle{0x1234567}, std::as_bytes(std::span("abc", 3)), written));
}

TEST_P(PlatformContract, AClientsRightsAreGivenBack) {
  const auto revert = function(u"spoolss.dll", "RevertToPrinterSelf");
  const auto impersonate = function(u"spoolss.dll", "ImpersonatePrinterClient");
  // Outside the spooler there may be no client.
  const TokenHandle token = spooler_.revertToPrinterSelf(revert);
  EXPECT_TRUE(token == TokenHandle{} || spooler_.impersonatePrinterClient(impersonate, token));
}

TEST_P(PlatformContract, DescriptorsTakeListsOnceInitialized) {
  Security& security = platform_.security;
  const OwnedDescriptor descriptor = security.allocateDescriptor(40);
  ASSERT_TRUE(descriptor);
  EXPECT_FALSE(security.setNullDacl(descriptor.get())) << "not initialized";
  EXPECT_TRUE(security.initialize(descriptor.get()));
  EXPECT_TRUE(security.setNullDacl(descriptor.get()));
  const auto call =
      function(u"Advapi32.dll", "ConvertStringSecurityDescriptorToSecurityDescriptorA");
  const OwnedDescriptor label = security.convertText(call, "S:(ML;;NW;;;LW)");
  ASSERT_TRUE(label);
  const auto sacl = security.sacl(label.get());
  ASSERT_TRUE(sacl);
  EXPECT_NE(*sacl, AclHandle{});
  EXPECT_TRUE(security.setSacl(descriptor.get(), *sacl));
  EXPECT_EQ(security.sacl(descriptor.get()), sacl);
  EXPECT_FALSE(security.sacl(DescriptorHandle{}));
}

TEST_P(PlatformContract, ObjectsLiveWhileSomebodyHoldsThem) {
  SecurityAttributesHolder holder;
  const SecurityAttributes* security = buildSecurityAttributes(platform_, holder);
  EXPECT_FALSE(objects_.openMutex(u"Local\\contract"));
  EXPECT_EQ(platform_.messages.lastError(), 2u);
  {
    const OwnedObject mutex = objects_.createMutex(security, u"Local\\contract");
    ASSERT_TRUE(mutex);
    EXPECT_TRUE(objects_.openMutex(u"contract")) << "the session's, with a prefix and without";
    EXPECT_FALSE(objects_.openMutex(u"Global\\contract"));
    EXPECT_FALSE(objects_.openMutex(u"Contract")) << "case counts";
    EXPECT_TRUE(objects_.createMutex(nullptr, u"contract")) << "opens what stands";
    EXPECT_FALSE(objects_.openEvent(u"contract"));
    EXPECT_FALSE(objects_.createEvent(security, u"contract"));
    EXPECT_EQ(platform_.messages.lastError(), 6u);
    EXPECT_FALSE(objects_.openMapping(u"contract"));
  }
  EXPECT_FALSE(objects_.openMutex(u"Local\\contract"));
}

TEST_P(PlatformContract, AnEventWakesOneWaiter) {
  const OwnedObject event = objects_.createEvent(nullptr, u"Local\\contract_event");
  const OwnedObject same = objects_.openEvent(u"Local\\contract_event");
  EXPECT_EQ(objects_.wait(event.get(), 1), WaitAnswer::timedOut);
  EXPECT_TRUE(objects_.setEvent(same.get()));
  EXPECT_EQ(objects_.wait(event.get(), noTimeLimit), WaitAnswer::signalled);
  EXPECT_EQ(objects_.wait(event.get(), 0), WaitAnswer::timedOut);
  EXPECT_FALSE(objects_.releaseMutex(event.get()));
  EXPECT_FALSE(objects_.setEvent(ObjectHandle{0x1234567}));
  EXPECT_EQ(objects_.wait(ObjectHandle{0x1234567}, 0), WaitAnswer::failed);
}

TEST_P(PlatformContract, AMutexIsHeldAsOftenAsItWasWaitedFor) {
  const OwnedObject mutex = objects_.createMutex(nullptr, u"Global\\contract_mutex");
  EXPECT_FALSE(objects_.releaseMutex(mutex.get()));
  EXPECT_EQ(platform_.messages.lastError(), 288u);
  EXPECT_EQ(objects_.wait(mutex.get(), noTimeLimit), WaitAnswer::signalled);
  EXPECT_EQ(objects_.wait(mutex.get(), noTimeLimit), WaitAnswer::signalled);
  const OwnedObject again = objects_.openMutex(u"Global\\contract_mutex");
  EXPECT_TRUE(objects_.releaseMutex(again.get()));
  EXPECT_TRUE(objects_.releaseMutex(mutex.get()));
  EXPECT_FALSE(objects_.releaseMutex(mutex.get()));
  machine_->abandonMutex(u"Global\\contract_mutex");
  EXPECT_EQ(objects_.wait(mutex.get(), noTimeLimit), WaitAnswer::abandoned);
  EXPECT_TRUE(objects_.releaseMutex(mutex.get()));
  EXPECT_EQ(objects_.wait(mutex.get(), 0), WaitAnswer::signalled);
  EXPECT_TRUE(objects_.releaseMutex(mutex.get()));
}

TEST_P(PlatformContract, ViewsOfAMappingShowOneMemory) {
  const OwnedObject made = objects_.createMapping(nullptr, u"Local\\contract_sm", 1303);
  ASSERT_TRUE(made);
  const OwnedView first = objects_.mapView(made.get(), 1303);
  ASSERT_TRUE(first);
  EXPECT_EQ(std::count(first.get(), first.get() + 1303, std::byte{0}), 1303);
  OwnedView second;
  {
    const OwnedObject opened = objects_.openMapping(u"Local\\contract_sm");
    second = objects_.mapView(opened.get(), 1303);
  }
  ASSERT_TRUE(second) << "and it outlives the handle that it came from";
  second.get()[1302] = std::byte{7};
  EXPECT_EQ(first.get()[1302], std::byte{7});
  EXPECT_FALSE(objects_.mapView(ObjectHandle{0x1234567}, 1));
  EXPECT_FALSE(objects_.mapView(made.get(), 5000)) << "more than the mapping's one page";
}

TEST_P(PlatformContract, FilesAreWrittenAndShared) {
  const std::u16string path = inFolder(u"out.pdf");
  EXPECT_FALSE(files_.attributes(path));
  EXPECT_TRUE(writeFile(path, "first text"));
  EXPECT_TRUE(writeFile(path, "2nd"));
  {
    const OwnedFile file(files_, files_.openForWriting(path, Disposition::openAlways));
    EXPECT_TRUE(files_.seekToEnd(file.get()));
    uint32_t written = 0;
    EXPECT_TRUE(files_.write(file.get(), std::as_bytes(std::span(" more\n", 6)), written));
    EXPECT_EQ(written, 6u);
    EXPECT_TRUE(files_.write(file.get(), {}, written));
    EXPECT_EQ(written, 0u);
    EXPECT_EQ(files_.openForWriting(path, Disposition::createAlways), invalidFile);
    EXPECT_EQ(platform_.messages.lastError(), 32u);
    EXPECT_FALSE(files_.remove(path));
  }
  EXPECT_EQ(files_.readLine(inFolder(u"OUT.pdf"), 100), "2nd more\n");
  EXPECT_EQ(files_.attributes(path).value_or(0) & attributeDirectory, 0u);
  EXPECT_TRUE(files_.remove(path));
  EXPECT_FALSE(files_.remove(path));
  EXPECT_EQ(platform_.messages.lastError(), 2u);
  for (const auto* bad : {u"none\\out.pdf", u"que?tion.pdf"}) {
    EXPECT_EQ(files_.openForWriting(inFolder(bad), Disposition::createAlways), invalidFile);
    EXPECT_NE(platform_.messages.lastError(), 0u);
  }
  EXPECT_EQ(files_.openForWriting(u"", Disposition::createAlways), invalidFile);
  EXPECT_EQ(files_.openForWriting(machine_->folder, Disposition::createAlways), invalidFile);
  uint32_t written = 9;
  EXPECT_FALSE(files_.write(invalidFile, {}, written));
  files_.close(invalidFile);
}

TEST_P(PlatformContract, DevicesHaveNamesInEveryDirectory) {
  for (const char16_t* device : {u"con", u"NUL.doc", u"com1 .1.pdf", u"Lpt9.pdf"}) {
    EXPECT_TRUE(files_.attributes(inFolder(device))) << testing::PrintToString(device);
  }
  for (const char16_t* name : {u"_con.pdf", u"con1.pdf", u"com0", u"x.con"}) {
    EXPECT_FALSE(files_.attributes(inFolder(name))) << testing::PrintToString(name);
  }
}

TEST_P(PlatformContract, DirectoriesAreMadeOneAtATime) {
  EXPECT_FALSE(files_.makeDirectory(inFolder(u"a\\b")));
  EXPECT_EQ(platform_.messages.lastError(), 3u);
  EXPECT_TRUE(files_.makeDirectory(inFolder(u"a")));
  EXPECT_TRUE(files_.makeDirectory(inFolder(u"a/b")));
  EXPECT_FALSE(files_.makeDirectory(inFolder(u"a")));
  EXPECT_EQ(platform_.messages.lastError(), 183u);
  EXPECT_FALSE(files_.attributes(u""));
  for (const std::optional<std::u16string>& path :
       {std::optional(inFolder(u"A\\B\\")), std::optional<std::u16string>(u"C:"),
        files_.systemDirectory(), files_.specialFolder(SpecialFolder::documents),
        files_.specialFolder(SpecialFolder::applicationData),
        files_.specialFolder(SpecialFolder::localApplicationData)}) {
    ASSERT_TRUE(path);
    EXPECT_NE(files_.attributes(*path).value_or(0) & attributeDirectory, 0u);
  }
}

TEST_P(PlatformContract, ALineEndsAtItsEndOrAtTheLimit) {
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},          {"name", "name"},           {"name\r\nsecond", "name\n"},
      {"\nx", "\n"},     {"0123456789", "01234567"}, {"0123456\r\n", "0123456\n"},
      {"ab\0cd\n", "ab"}};
  EXPECT_FALSE(files_.readLine(inFolder(u"none"), 8));
  for (const auto& [content, line] : cases) {
    ASSERT_TRUE(writeFile(inFolder(u"line.txt"), content));
    EXPECT_EQ(files_.readLine(inFolder(u"line.txt"), 8), line);
  }
}

TEST_P(PlatformContract, AProgramIsWaitedForAndTellsItsCode) {
  ProcessRequest request;
  request.commandLine = machine_->program;
  request.showState = uint16_t{0};
  const OwnedObject process = platform_.processes.create(request);
  ASSERT_TRUE(process);
  EXPECT_EQ(objects_.wait(process.get(), noTimeLimit), WaitAnswer::signalled);
  EXPECT_EQ(platform_.processes.exitCode(process.get()), 3u);
  EXPECT_FALSE(platform_.processes.exitCode(ObjectHandle{0x1234567}));
  EXPECT_NE(platform_.processes.currentThreadId(), 0u);
}

TEST_P(PlatformContract, TheUserHasAnIdentifier) {
  Accounts& accounts = platform_.accounts;
  const auto user = accounts.userName();
  ASSERT_TRUE(user);
  const AccountSizes sizes = accounts.accountSizes(u"", *user);
  ASSERT_NE(sizes.sid, 0u);
  ASSERT_NE(sizes.domain, 0u);
  const auto sid = accounts.account(u"", *user, sizes);
  ASSERT_TRUE(sid);
  EXPECT_TRUE(sid->valid);
  EXPECT_EQ(sid->authority[5], 5);
  EXPECT_EQ(sid->subAuthorities.size() * 4 + 8, sizes.sid);
  EXPECT_EQ(accounts.accountSizes(u"", u"nobody of that name").sid, 0u);
  EXPECT_FALSE(accounts.domainController(function(u"Netapi32.dll", "NetGetDCName"),
                                         function(u"Netapi32.dll", "NetApiBufferFree")))
      << "the test machine is in no domain";
}

TEST_P(PlatformContract, TheClockRunsInMillisecondsAndInLocalTime) {
  Clock& clock = platform_.clock;
  const uint32_t before = clock.tickCount();
  clock.sleep(100);
  EXPECT_GE(clock.tickCount() - before, 50u);
  const int64_t leapDay = 951782400;  // 2000-02-29T00:00:00Z
  const auto local = clock.localTime(leapDay - clock.timeZoneBias() * -60);
  ASSERT_TRUE(local);
  EXPECT_EQ((std::array{local->year, local->month, local->day, local->hour, local->minute}),
            (std::array{2000, 2, 29, 0, 0}));
  EXPECT_GT(clock.now(), leapDay);
}

TEST_P(PlatformContract, ASeedGivesItsNumbers) {
  platform_.random.seed(1);
  EXPECT_EQ(platform_.random.next(), 41u);
  EXPECT_EQ(platform_.random.next(), 18467u);
  platform_.random.seed(0xFFFFFFFF);
  EXPECT_EQ(platform_.random.next(), 35u);
}

TEST_P(PlatformContract, ErrorsHaveTextsAndLastUntilReported) {
  Messages& messages = platform_.messages;
  EXPECT_FALSE(messages.errorText(2).value_or(u"").empty());
  EXPECT_FALSE(messages.errorText(0x2FFFFFFF));
  {
    OwnedObject event = objects_.createEvent(nullptr, u"contract_last");
    OwnedView none;
    messages.setLastError(77);
  }
  EXPECT_EQ(messages.lastError(), 77u) << "closing changed it";
}

TEST_P(PlatformContract, MessagesAreShownWhateverTheirText) {
  Messages& messages = platform_.messages;
  for (const std::u16string& text : {std::u16string(), std::u16string(2000, u'\u20AC')}) {
    EXPECT_NO_THROW(messages.box(text, text, serviceNotification));
    EXPECT_NO_THROW(messages.debug(text));
    const std::string bytes(text.size(), '%');
    EXPECT_NO_THROW(messages.narrowBox(bytes, bytes, serviceNotification));
    EXPECT_NO_THROW(messages.narrowDebug(bytes));
  }
}

TEST_P(PlatformContract, LowMemoryHasAddressesOfThirtyTwoBits) {
  std::vector<OwnedLowBlock> blocks;
  for (size_t size : {1u, 6000u, 200000u}) {
    blocks.push_back(platform_.memory.allocate(size));
    std::byte* const block = blocks.back().get();
    ASSERT_TRUE(block);
    EXPECT_LE(reinterpret_cast<uintptr_t>(block) + size, 0xFFFFFFFF);
    EXPECT_EQ(std::count(block, block + size, std::byte{0}), static_cast<ptrdiff_t>(size));
    std::memset(block, 0xA5, size);
  }
  EXPECT_EQ(blocks[0].get()[0], std::byte{0xA5});
  EXPECT_FALSE(platform_.memory.allocate(SIZE_MAX / 2));
}

TEST_P(PlatformContract, TextConvertsBothWays) {
  EXPECT_EQ(platform_.text.widen("plain"), u"plain");
  EXPECT_EQ(platform_.text.widen(""), u"");
  EXPECT_EQ(platform_.text.narrow(u"plain"), "plain");
  EXPECT_EQ(platform_.text.widen(platform_.text.narrow(u"\u00E9\u00DF")), u"\u00E9\u00DF");
  const std::u16string mixed = u"a\u00E9\u20AC\U0001F600\xD800z";
  const std::string whole = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBDz";
  std::string buffer(whole.size() + 1, '#');
  EXPECT_TRUE(platform_.text.toUtf8(mixed, buffer));
  EXPECT_EQ(buffer, whole + '\0');
  for (const auto& [room, fits] :
       {std::pair{0u, 0u}, {1u, 1u}, {2u, 1u}, {3u, 3u}, {9u, 6u}, {13u, 13u}, {14u, 14u}}) {
    std::string small(room, '#');
    EXPECT_FALSE(platform_.text.toUtf8(mixed, small)) << room;
    EXPECT_EQ(small, whole.substr(0, fits) + std::string(room - fits, '#'));
  }
}

}  // namespace
}  // namespace umpd
