// UmDriver: the record of one print job, from its start to its end.
//
// A job's bytes go unread into one file, of which the launcher is notified when it is begun and
// when it is complete. A job in passthru mode goes on to the printer instead. In the mode of
// FinishPrintEv there is no launcher: names in the registry and an event say that the file is
// there. One lock, shared by all jobs of the machine, is held through each of init, write and
// endDoc, also while the launcher is waited for. Start reading at init, write, endDoc.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>

#include "umpd/Impersonation.h"
#include "umpd/LauncherProxy.h"
#include "umpd/NamedMutex.h"
#include "umpd/OutFile.h"
#include "umpd/PrinterInfo.h"
#include "umpd/PrinterSettings.h"
#include "umpd/platform/Platform.h"

namespace umpd {

enum JobStatus : uint32_t {
  statusInitialised = 1,
  statusEnded = 2,
  // Nobody asks: an aborted job goes on as before.
  statusAborted = 4,
  // A write failed, and no other is tried.
  statusFailed = 8,
};

class UmDriver {
 public:
  // The letters TQPD, by which a record is known.
  static constexpr uint32_t magicWord = 0x54515044;

  explicit UmDriver(Platform& platform);
  UmDriver(const UmDriver&) = delete;
  UmDriver& operator=(const UmDriver&) = delete;
  virtual ~UmDriver();

  // The first write of a job has the launcher run and creates the file. False if not all bytes were
  // taken.
  virtual bool write(const std::byte* buffer, uint32_t length);
  // True, whatever happens.
  virtual bool endDoc();
  // Writes, but not after a write that failed.
  bool writeUnlessFailed(const std::byte* buffer, uint32_t length);

  // By the spooler's handle and job number or, without a handle, by the printer's name, which may
  // be null only beside a handle. False if there is no such printer.
  bool init(PrinterHandle handle, uint32_t job, const char16_t* name);

  // The document's name, or nothing when the job has ended. Any thread may ask.
  std::u16string documentName() const;

  // Empties the record and marks it as ended.
  void resetJob();
  // Required from outside; nothing in the library calls it, so that `doPrint` stays 0.
  void readDoPrint();

  void waitJobMutex() { jobMutex.wait(); }
  void releaseJobMutex() { jobMutex.release(); }

  PrinterSettings settings;
  PrinterInfoReader infoReader;
  // Atomic, as status is: a job's settings are read by other threads while its end empties it.
  std::atomic<uint32_t> magic = magicWord;
  PrinterHandle printerHandle{};  // the caller's
  uint32_t jobId = 0;
  std::atomic<uint32_t> status = 0;
  NamedMutex jobMutex;
  std::u16string outputPath;
  std::u16string userName;
  std::u16string docName;
  uint32_t bytesWritten = 0;  // in all; of the last write in passthru mode
  bool passthru = false;
  OutFile outFile;
  uint32_t doPrint = 0;  // the end of the job sets the setting of that name back
  Impersonation impersonation;

 private:
  bool openNamedPrinter(const char16_t* name);
  void handSettingsToDriver();
  void findDocument();
  bool prepareLauncher();
  bool ensureLauncherRuns(LauncherProxy& launcher);
  bool createOutFile();
  void protectedModeFallback();
  void deleteSpoolJob();
  void announceFile();
  void signalFinishedPrint(const std::u16string& document);
  void clear();

  // Guards docName, which others may ask for while the job ends.
  mutable std::mutex nameMutex_;
};

// Holds the lock of all jobs until the end of its scope.
class JobLock {
 public:
  explicit JobLock(UmDriver& job) : job_(job) { job_.waitJobMutex(); }
  JobLock(const JobLock&) = delete;
  JobLock& operator=(const JobLock&) = delete;
  ~JobLock() { job_.releaseJobMutex(); }

 private:
  UmDriver& job_;
};

}  // namespace umpd
