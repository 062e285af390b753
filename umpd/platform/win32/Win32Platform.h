// Win32Platform: the real platform. Each operation is one call of
// the system, or the pair of calls that it takes, with the access masks, flags and levels that the
// front end needs. What is documented in Platform.h is not repeated here.
#pragma once

#include <cstddef>
#include <cstdint>

#include "umpd/platform/Platform.h"

namespace umpd {

class Win32Version : public SystemVersion {
 public:
  std::optional<OsVersion> query() override;
};

class Win32Modules : public Modules {
 public:
  OwnedModule load(const std::u16string& name) override;
  FunctionAddress find(ModuleHandle module, const char* function) override;
  void close(ModuleHandle module) override;
};

class Win32Registry : public Registry {
 public:
  CreatedKey createKey(KeyHandle parent, const std::u16string& subkey, uint32_t access) override;
  OwnedKey openKey(KeyHandle parent, const std::u16string& subkey, uint32_t access) override;
  OwnedKey openCurrentUser(FunctionAddress call, uint32_t access) override;
  RegistryValue readValue(KeyHandle key, const std::u16string& name, size_t room) override;
  bool hasValue(KeyHandle key, const std::u16string& name) override;
  bool writeValue(KeyHandle key, const std::u16string& name, uint32_t type,
                  std::span<const std::byte> data) override;
  std::optional<KeyInfo> queryInfo(KeyHandle key) override;
  RegistryValue enumerateValue(KeyHandle key, uint32_t index, size_t nameRoom,
                               size_t dataRoom) override;
  void close(KeyHandle key) override;
};

class Win32Profiles : public ProfileFiles {
 public:
  uint32_t readInt(const std::u16string& path, const std::u16string& section,
                   const std::u16string& key, uint32_t defaultValue) override;
  std::u16string readSection(const std::u16string& path, const std::u16string& section,
                             size_t room) override;
};

class Win32Spooler : public Spooler {
 public:
  OwnedPrinter openPrinter(const std::u16string& name, const DevMode& devMode,
                           uint32_t access) override;
  void close(PrinterHandle printer) override;
  SizeAnswer printerSize(PrinterHandle printer) override;
  std::optional<PrinterInfo> printer(PrinterHandle printer, uint32_t size) override;
  SizeAnswer jobsSize(PrinterHandle printer, uint32_t first, uint32_t count) override;
  std::optional<std::vector<JobInfo>> jobs(PrinterHandle printer, uint32_t first, uint32_t count,
                                           uint32_t size) override;
  uint32_t printersSize() override;
  std::optional<std::vector<PrinterInfo>> printers(uint32_t size) override;
  uint32_t driverDirectorySize(bool narrow) override;
  std::optional<std::u16string> driverDirectory(bool narrow, uint32_t size) override;
  std::optional<std::u16string> jobDocument(PrinterHandle printer, uint32_t jobId) override;
  bool setJob(PrinterHandle printer, uint32_t jobId, uint32_t command) override;
  bool writePrinter(PrinterHandle printer, std::span<const std::byte> data,
                    uint32_t& written) override;
  TokenHandle revertToPrinterSelf(FunctionAddress call) override;
  bool impersonatePrinterClient(FunctionAddress call, TokenHandle token) override;
};

class Win32Security : public Security {
 public:
  OwnedDescriptor allocateDescriptor(size_t size) override;
  bool initialize(DescriptorHandle descriptor) override;
  bool setNullDacl(DescriptorHandle descriptor) override;
  OwnedDescriptor convertText(FunctionAddress call, const std::string& text) override;
  std::optional<AclHandle> sacl(DescriptorHandle descriptor) override;
  bool setSacl(DescriptorHandle descriptor, AclHandle sacl) override;
  void close(DescriptorHandle descriptor) override;
};

class Win32Objects : public NamedObjects {
 public:
  OwnedObject createMutex(const SecurityAttributes* security, const std::u16string& name) override;
  OwnedObject openMutex(const std::u16string& name) override;
  bool releaseMutex(ObjectHandle mutex) override;
  OwnedObject createEvent(const SecurityAttributes* security, const std::u16string& name) override;
  OwnedObject openEvent(const std::u16string& name) override;
  bool setEvent(ObjectHandle event) override;
  WaitAnswer wait(ObjectHandle object, uint32_t milliseconds) override;
  OwnedObject createMapping(const SecurityAttributes* security, const std::u16string& name,
                            uint32_t size) override;
  OwnedObject openMapping(const std::u16string& name) override;
  OwnedView mapView(ObjectHandle mapping, size_t size) override;
  void close(ObjectHandle object) override;
  void close(std::byte* view) override;
};

class Win32Files : public Files {
 public:
  FileHandle openForWriting(const std::u16string& path, Disposition disposition) override;
  bool write(FileHandle file, std::span<const std::byte> data, uint32_t& written) override;
  bool seekToEnd(FileHandle file) override;
  void close(FileHandle file) override;
  bool remove(const std::u16string& path) override;
  std::optional<uint32_t> attributes(const std::u16string& path) override;
  bool makeDirectory(const std::u16string& path) override;
  std::optional<std::string> readLine(const std::u16string& path, size_t limit) override;
  std::optional<std::u16string> specialFolder(SpecialFolder folder) override;
  std::optional<std::u16string> systemDirectory() override;
};

class Win32Processes : public Processes {
 public:
  explicit Win32Processes(Win32Objects& objects) : objects_(objects) {}
  OwnedObject create(const ProcessRequest& request) override;
  std::optional<uint32_t> exitCode(ObjectHandle process) override;
  uint32_t currentThreadId() override;
  bool isProtectedMode(FunctionAddress call) override;

 private:
  Win32Objects& objects_;
};

class Win32Accounts : public Accounts {
 public:
  std::optional<std::u16string> userName() override;
  AccountSizes accountSizes(const std::u16string& server, const std::u16string& user) override;
  std::optional<Sid> account(const std::u16string& server, const std::u16string& user,
                             AccountSizes sizes) override;
  std::optional<std::u16string> domainController(FunctionAddress call,
                                                 FunctionAddress release) override;
};

class Win32Clock : public Clock {
 public:
  uint32_t tickCount() override;
  void sleep(uint32_t milliseconds) override;
  int64_t now() override;
  std::optional<CalendarTime> localTime(int64_t time) override;
  int32_t timeZoneBias() override;
};

// The C runtime's generator, of which each thread has a state of its own.
class Win32Random : public Random {
 public:
  void seed(uint32_t value) override;
  uint32_t next() override;
};

class Win32Messages : public Messages {
 public:
  void box(const std::u16string& text, const std::u16string& caption, uint32_t flags) override;
  void narrowBox(const std::string& text, const std::string& caption, uint32_t flags) override;
  void debug(const std::u16string& text) override;
  void narrowDebug(const std::string& text) override;
  uint32_t lastError() override;
  void setLastError(uint32_t error) override;
  std::optional<std::u16string> errorText(uint32_t error) override;
};

class Win32Text : public TextConversion {
 public:
  std::u16string widen(const std::string& text) override;
  std::string narrow(const std::u16string& text) override;
  bool toUtf8(const std::u16string& text, std::span<char> buffer) override;
};

class Win32Memory : public LowMemory {
 public:
  OwnedLowBlock allocate(size_t size) override;
  void close(std::byte* block) override;
};

// The groups, which must exist before the platform refers to them.
struct Win32Parts {
  Win32Version version;
  Win32Modules modules;
  Win32Registry registry;
  Win32Profiles profiles;
  Win32Spooler spooler;
  Win32Security security;
  Win32Objects objects;
  Win32Files files;
  Win32Processes processes{objects};
  Win32Accounts accounts;
  Win32Clock clock;
  Win32Random random;
  Win32Messages messages;
  Win32Text text;
  Win32Memory memory;
};

class Win32Platform {
 public:
  Win32Platform();

  Win32Parts system;
  Platform platform;
};

}  // namespace umpd
