// Platform: all that the front end needs of an operating system, in small groups.
//
// Each operation stands for one call of the system (or the usual pair of calls) and means what that
// call means; only the types are the project's own. Text is UTF-16 unless an operation says
// "narrow", which is the default code page. A failure is an empty optional, an empty owner or
// false, and lastError() has the reason wherever the system's call sets one. Nothing here throws
// except std::bad_alloc.
//
// Two implementations: platform/win32 makes the calls, platform/simulated is a machine in memory.
// One suite of tests runs over both.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "umpd/platform/Owned.h"

namespace umpd {

// What a call answers in lastError() when its buffer is too small: the normal answer to a question
// for the size.
inline constexpr uint32_t errorInsufficientBuffer = 122;
inline constexpr uint32_t errorNotEnoughMemory = 8;

// An answer to a question for a buffer's size.
struct SizeAnswer {
  bool succeeded = false;
  uint32_t needed = 0;
  uint32_t error = 0;  // of a call that did not succeed
};

// --- Version ---

struct OsVersion {
  uint32_t major = 0;
  uint32_t minor = 0;
  uint32_t platformId = 0;  // 1: Windows 9x, 2: the NT line
};

class SystemVersion {
 public:
  virtual ~SystemVersion() = default;
  // GetVersionExA.
  virtual std::optional<OsVersion> query() = 0;

  // Without a version every test is false.
  bool isNt4();
  bool isWin9x();
  bool isWin2kOrLater();
  bool isVistaOrLater();
};

// --- Code loaded at run time ---

enum class ModuleHandle : uintptr_t {};
// A function's address; 0 is "not there". Operations that take one call it, and need it not 0.
enum class FunctionAddress : uintptr_t {};

class Modules;
using OwnedModule = Owned<Modules, ModuleHandle>;

class Modules {
 public:
  virtual ~Modules() = default;
  // A library of the system, by the name of its file. One of that name elsewhere is not seen.
  virtual OwnedModule load(const std::u16string& name) = 0;
  virtual FunctionAddress find(ModuleHandle module, const char* function) = 0;
  virtual void close(ModuleHandle module) = 0;
};

// --- Registry ---

enum class KeyHandle : uintptr_t {};

constexpr KeyHandle predefinedKey(uint32_t number) {
  return KeyHandle{static_cast<uintptr_t>(intptr_t{static_cast<int32_t>(number)})};
}
inline constexpr KeyHandle keyCurrentUser = predefinedKey(0x80000001);
inline constexpr KeyHandle keyLocalMachine = predefinedKey(0x80000002);
inline constexpr KeyHandle keyUsers = predefinedKey(0x80000003);

// Access masks.
inline constexpr uint32_t keyRead = 1;
inline constexpr uint32_t keyWrite = 2;

// The value types in use. Any other number can be met in reading.
inline constexpr uint32_t registryText = 1;
inline constexpr uint32_t registryDword = 4;

class Registry;
using OwnedKey = Owned<Registry, KeyHandle>;

struct CreatedKey {
  OwnedKey key;          // none on failure
  bool created = false;  // the key was not there before
};

enum class RegistryAnswer { ok, absent, failed };

struct RegistryValue {
  RegistryAnswer answer = RegistryAnswer::failed;
  std::u16string name;
  uint32_t type = 0;
  std::vector<std::byte> data;

  bool ok() const { return answer == RegistryAnswer::ok; }
  // The data as text, up to its first NUL; an odd byte at the end is left out.
  std::u16string text() const;
  // The data as a number, low byte first; missing bytes count as 0.
  uint32_t dword() const;
};

struct KeyInfo {
  uint32_t valueCount = 0;
  uint32_t longestName = 0;  // characters, without the terminator
  uint32_t longestData = 0;  // bytes
};

class Registry {
 public:
  virtual ~Registry() = default;
  virtual CreatedKey createKey(KeyHandle parent, const std::u16string& subkey, uint32_t access) = 0;
  virtual OwnedKey openKey(KeyHandle parent, const std::u16string& subkey, uint32_t access) = 0;
  // Calls RegOpenCurrentUser: the hive of the thread's user.
  virtual OwnedKey openCurrentUser(FunctionAddress call, uint32_t access) = 0;
  // Data of more than `room` bytes is a failure; an unknown name is "absent".
  virtual RegistryValue readValue(KeyHandle key, const std::u16string& name, size_t room) = 0;
  // True if there is a value of that name, of whatever type and content.
  virtual bool hasValue(KeyHandle key, const std::u16string& name) = 0;
  virtual bool writeValue(KeyHandle key, const std::u16string& name, uint32_t type,
                          std::span<const std::byte> data) = 0;
  virtual std::optional<KeyInfo> queryInfo(KeyHandle key) = 0;
  // "absent" after the last value. A name of `nameRoom` characters (its terminator takes one) or
  // data of more than `dataRoom` bytes is a failure.
  virtual RegistryValue enumerateValue(KeyHandle key, uint32_t index, size_t nameRoom,
                                       size_t dataRoom) = 0;
  // Closing a predefined key does nothing.
  virtual void close(KeyHandle key) = 0;

  // Text goes with its terminator.
  bool writeText(KeyHandle key, const std::u16string& name, const std::u16string& text);
  bool writeDword(KeyHandle key, const std::u16string& name, uint32_t value);
};

// --- Profile files ---

class ProfileFiles {
 public:
  virtual ~ProfileFiles() = default;
  virtual uint32_t readInt(const std::u16string& path, const std::u16string& section,
                           const std::u16string& key, uint32_t defaultValue) = 0;
  // The section's `key=value` texts, each ended by a NUL, as a buffer of `room` characters takes
  // them. If they do not fit, the last is cut and has no NUL. Empty if there is nothing.
  virtual std::u16string readSection(const std::u16string& path, const std::u16string& section,
                                     size_t room) = 0;
};

// --- Spooler ---

enum class PrinterHandle : uintptr_t {};
enum class TokenHandle : uintptr_t {};

class Spooler;
using OwnedPrinter = Owned<Spooler, PrinterHandle>;

// A printer's record of level 2, read in the narrow form; a null text is an empty optional.
struct PrinterInfo {
  std::optional<std::u16string> printerName;
  std::optional<std::u16string> portName;
  std::optional<std::u16string> driverName;
  uint32_t jobs = 0;
};

// A job's record of level 2, read in the narrow form.
struct JobInfo {
  uint32_t jobId = 0;
  std::optional<std::u16string> document;
  std::optional<std::u16string> statusText;
  uint32_t status = 0;
  uint32_t position = 0;
};

// The device settings that a printer is opened with. What is not named here is 0.
struct DevMode {
  std::u16string deviceName;  // at most 31 characters
  uint16_t specVersion = 0;
  uint16_t driverVersion = 0;
  uint16_t size = 0;         // of the public record
  uint16_t driverExtra = 0;  // bytes after it, zeros
  uint32_t fields = 0;
  int16_t orientation = 0;
  int16_t paperSize = 0;
  int16_t scale = 0;
  int16_t copies = 0;
  int16_t defaultSource = 0;
  int16_t printQuality = 0;
  int16_t color = 0;
  int16_t duplex = 0;
  int16_t ttOption = 0;
  std::u16string formName;  // at most 31 characters
};

class Spooler {
 public:
  virtual ~Spooler() = default;
  // With datatype "RAW".
  virtual OwnedPrinter openPrinter(const std::u16string& name, const DevMode& devMode,
                                   uint32_t access) = 0;
  virtual void close(PrinterHandle printer) = 0;

  // Questions come in pairs, first for the size and then for the data. What the spooler reports
  // may grow or shrink between the two; data that does not fit is a failure, and so is a lack of
  // memory for it, which lastError() reports as errorNotEnoughMemory.
  virtual SizeAnswer printerSize(PrinterHandle printer) = 0;
  virtual std::optional<PrinterInfo> printer(PrinterHandle printer, uint32_t size) = 0;
  virtual SizeAnswer jobsSize(PrinterHandle printer, uint32_t first, uint32_t count) = 0;
  virtual std::optional<std::vector<JobInfo>> jobs(PrinterHandle printer, uint32_t first,
                                                   uint32_t count, uint32_t size) = 0;
  // All local printers and connections. The size is 0 if there are none, or on failure.
  virtual uint32_t printersSize() = 0;
  virtual std::optional<std::vector<PrinterInfo>> printers(uint32_t size) = 0;
  // The driver directory in bytes, terminator included, and then itself; `narrow` asks through the
  // narrow call. The size is 0 on failure.
  virtual uint32_t driverDirectorySize(bool narrow) = 0;
  virtual std::optional<std::u16string> driverDirectory(bool narrow, uint32_t size) = 0;

  // The document's name of a job, by the wide call; empty also if the job has none.
  virtual std::optional<std::u16string> jobDocument(PrinterHandle printer, uint32_t jobId) = 0;
  // Level 0, no record: command 3 cancels, 5 deletes.
  virtual bool setJob(PrinterHandle printer, uint32_t jobId, uint32_t command) = 0;
  // `written` is set in any case that the call sets it.
  virtual bool writePrinter(PrinterHandle printer, std::span<const std::byte> data,
                            uint32_t& written) = 0;

  // RevertToPrinterSelf, ImpersonatePrinterClient: out of the client's token, and back into it.
  virtual TokenHandle revertToPrinterSelf(FunctionAddress call) = 0;
  virtual bool impersonatePrinterClient(FunctionAddress call, TokenHandle token) = 0;
};

// --- Security ---

enum class DescriptorHandle : uintptr_t {};
enum class AclHandle : uintptr_t {};

class Security;
using OwnedDescriptor = Owned<Security, DescriptorHandle>;

struct SecurityAttributes {
  uint32_t length = 0;
  DescriptorHandle descriptor{};
  bool inherit = false;
};

class Security {
 public:
  virtual ~Security() = default;
  // `size` zeroed bytes for a descriptor.
  virtual OwnedDescriptor allocateDescriptor(size_t size) = 0;
  // Revision 1.
  virtual bool initialize(DescriptorHandle descriptor) = 0;
  // A list that is present, null and not defaulted: everybody may do everything.
  virtual bool setNullDacl(DescriptorHandle descriptor) = 0;
  // Calls ConvertStringSecurityDescriptorToSecurityDescriptorA, revision 1.
  virtual OwnedDescriptor convertText(FunctionAddress call, const std::string& text) = 0;
  // Empty on failure, and for no descriptor. A null list is no failure.
  virtual std::optional<AclHandle> sacl(DescriptorHandle descriptor) = 0;
  // Present, not defaulted. The list stays where it is, in its own descriptor.
  virtual bool setSacl(DescriptorHandle descriptor, AclHandle sacl) = 0;
  virtual void close(DescriptorHandle descriptor) = 0;
};

// --- Named objects and shared memory ---

enum class ObjectHandle : uintptr_t {};

class NamedObjects;
// Mutexes, events, mappings and processes.
using OwnedObject = Owned<NamedObjects, ObjectHandle>;
// A view of a mapping: its address.
using OwnedView = Owned<NamedObjects, std::byte*>;

// Numbers as the system has them. An abandoned lock is acquired.
enum class WaitAnswer : uint32_t {
  signalled = 0,
  abandoned = 0x80,
  timedOut = 258,
  failed = 0xFFFFFFFF
};

inline constexpr uint32_t noTimeLimit = 0xFFFFFFFF;

class NamedObjects {
 public:
  virtual ~NamedObjects() = default;
  // Creating an existing name opens it. Opening a name that does not exist returns none: an answer
  // as much as a failure. `security` may be null. All handles are not inheritable.
  virtual OwnedObject createMutex(const SecurityAttributes* security,
                                  const std::u16string& name) = 0;
  virtual OwnedObject openMutex(const std::u16string& name) = 0;
  virtual bool releaseMutex(ObjectHandle mutex) = 0;
  // Auto-reset, not signalled.
  virtual OwnedObject createEvent(const SecurityAttributes* security,
                                  const std::u16string& name) = 0;
  virtual OwnedObject openEvent(const std::u16string& name) = 0;
  virtual bool setEvent(ObjectHandle event) = 0;
  virtual WaitAnswer wait(ObjectHandle object, uint32_t milliseconds) = 0;
  // On the paging file, to read and write, zeros at first.
  virtual OwnedObject createMapping(const SecurityAttributes* security, const std::u16string& name,
                                    uint32_t size) = 0;
  virtual OwnedObject openMapping(const std::u16string& name) = 0;
  // The whole mapping, to read and write. Others may have made it: none if it has less than `size`
  // bytes of committed memory.
  virtual OwnedView mapView(ObjectHandle mapping, size_t size) = 0;
  virtual void close(ObjectHandle object) = 0;
  virtual void close(std::byte* view) = 0;
};

// --- Files and folders ---

enum class FileHandle : uintptr_t {};
// What a file that could not be opened has for a handle. It is not "none", and an owner closes it.
inline constexpr FileHandle invalidFile = FileHandle{UINTPTR_MAX};

enum class Disposition : uint32_t { createAlways = 2, openAlways = 4 };

inline constexpr uint32_t attributeDirectory = 0x10;

// Special folders, by the shell's numbers.
enum class SpecialFolder : int { documents = 5, applicationData = 26, localApplicationData = 28 };

class Files;
using OwnedFile = Owned<Files, FileHandle>;

class Files {
 public:
  virtual ~Files() = default;
  // To write; others may read meanwhile; normal attributes. invalidFile on failure.
  virtual FileHandle openForWriting(const std::u16string& path, Disposition disposition) = 0;
  virtual bool write(FileHandle file, std::span<const std::byte> data, uint32_t& written) = 0;
  virtual bool seekToEnd(FileHandle file) = 0;
  // Any handle but none, invalidFile too.
  virtual void close(FileHandle file) = 0;
  virtual bool remove(const std::u16string& path) = 0;
  // Empty if there is nothing of that name. This is the status query too.
  virtual std::optional<uint32_t> attributes(const std::u16string& path) = 0;
  // One directory, in an existing one.
  virtual bool makeDirectory(const std::u16string& path) = 0;
  // The first line of a text file with its line end, at most `limit` bytes, and up to a NUL in it;
  // an empty text if the file has none. No value if the file cannot be opened.
  virtual std::optional<std::string> readLine(const std::u16string& path, size_t limit) = 0;

  // The folder's path, which may be empty.
  virtual std::optional<std::u16string> specialFolder(SpecialFolder folder) = 0;
  // A path of 260 characters or more, terminator included, is a failure.
  virtual std::optional<std::u16string> systemDirectory() = 0;
};

// --- Processes ---

struct ProcessRequest {
  std::u16string commandLine;  // no application name goes beside it
  std::u16string directory;    // empty: the caller's
  uint32_t creationFlags = 0;
  // The window's first state, if one is asked for.
  std::optional<uint16_t> showState;
};

class Processes {
 public:
  virtual ~Processes() = default;
  // The process, to wait on with NamedObjects::wait; its thread's handle is closed already.
  virtual OwnedObject create(const ProcessRequest& request) = 0;
  virtual std::optional<uint32_t> exitCode(ObjectHandle process) = 0;
  virtual uint32_t currentThreadId() = 0;
  // Calls IEIsProtectedModeProcess: true if its out value is 1.
  virtual bool isProtectedMode(FunctionAddress call) = 0;
};

// --- Accounts ---

// A security identifier of revision 1, taken apart.
struct Sid {
  bool valid = false;
  std::array<uint8_t, 6> authority{};
  std::vector<uint32_t> subAuthorities;
};

struct AccountSizes {
  uint32_t sid = 0;     // bytes
  uint32_t domain = 0;  // characters
};

class Accounts {
 public:
  virtual ~Accounts() = default;
  // Of the thread's user; a name of 260 characters or more, terminator included, is a failure.
  virtual std::optional<std::u16string> userName() = 0;
  // An empty server asks this machine and those it trusts. Sizes are 0 for an unknown account.
  virtual AccountSizes accountSizes(const std::u16string& server, const std::u16string& user) = 0;
  virtual std::optional<Sid> account(const std::u16string& server, const std::u16string& user,
                                     AccountSizes sizes) = 0;
  // Calls NetGetDCName with no server and no domain, and frees its buffer with `release`,
  // which is NetApiBufferFree.
  virtual std::optional<std::u16string> domainController(FunctionAddress call,
                                                         FunctionAddress release) = 0;
};

// --- Clock and random numbers ---

struct CalendarTime {
  int year = 0;
  int month = 0;  // from 1
  int day = 0;    // from 1
  int hour = 0;
  int minute = 0;
  int second = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  // Milliseconds since the system's start; wraps.
  virtual uint32_t tickCount() = 0;
  virtual void sleep(uint32_t milliseconds) = 0;
  // Seconds since 1970, UTC.
  virtual int64_t now() = 0;
  // The local calendar at that moment, daylight saving included.
  virtual std::optional<CalendarTime> localTime(int64_t time) = 0;
  // Minutes to add to local standard time to reach UTC.
  virtual int32_t timeZoneBias() = 0;
};

class Random {
 public:
  virtual ~Random() = default;
  virtual void seed(uint32_t value) = 0;
  // 0 to 32767.
  virtual uint32_t next() = 0;
};

// --- Messages and texts ---

// The flag of a box that shows with no desktop of its own.
inline constexpr uint32_t serviceNotification = 0x200000;

class Messages {
 public:
  virtual ~Messages() = default;
  // Boxes have no owner window.
  virtual void box(const std::u16string& text, const std::u16string& caption, uint32_t flags) = 0;
  virtual void narrowBox(const std::string& text, const std::string& caption, uint32_t flags) = 0;
  virtual void debug(const std::u16string& text) = 0;
  virtual void narrowDebug(const std::string& text) = 0;
  virtual uint32_t lastError() = 0;
  virtual void setLastError(uint32_t error) = 0;
  // The system's text for an error.
  virtual std::optional<std::u16string> errorText(uint32_t error) = 0;
};

class TextConversion {
 public:
  virtual ~TextConversion() = default;
  // From and to the default code page.
  virtual std::u16string widen(const std::string& text) = 0;
  virtual std::string narrow(const std::u16string& text) = 0;
  // UTF-8 with a terminator, into what room there is. In too small a buffer the characters that fit
  // whole are left, with no terminator, and the answer is false.
  virtual bool toUtf8(const std::u16string& text, std::span<char> buffer) = 0;
};

// --- Memory ---

class LowMemory;
using OwnedLowBlock = Owned<LowMemory, std::byte*>;

// Memory whose addresses fit into 32 bits, as a job's handle has no more for its record's.
class LowMemory {
 public:
  virtual ~LowMemory() = default;
  // Zeroed, page by page: for a few records that live long. None if there is no room below 4 GiB.
  virtual OwnedLowBlock allocate(size_t size) = 0;
  virtual void close(std::byte* block) = 0;
};

// --- All of it ---

// What the front end remembers for as long as its process lives. It is kept here and not in
// statics, so that whoever makes a platform makes a fresh process.
struct ProcessState {
  // Guards the driver directory.
  std::mutex directoryMutex;
  std::u16string driverDirectory;  // with its version subdirectory; empty: not known yet
  // Guards the mapping, and keeps the process's threads apart in its record.
  std::mutex domainControllerMutex;
  OwnedObject domainControllerMapping;
  OwnedView domainControllerView;
  std::atomic<bool> randomSeeded = false;

  // As if the process began anew.
  void reset();
};

struct Platform {
  SystemVersion& version;
  Modules& modules;
  Registry& registry;
  ProfileFiles& profiles;
  Spooler& spooler;
  Security& security;
  NamedObjects& objects;
  Files& files;
  Processes& processes;
  Accounts& accounts;
  Clock& clock;
  Random& random;
  Messages& messages;
  TextConversion& text;
  LowMemory& memory;
  ProcessState process{};
};

}  // namespace umpd
