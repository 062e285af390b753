// The three steps of a job, each under the lock of all jobs: init asks the printer and reads its
// settings; write makes ready at its first call (launcher, name, file) and then only writes; endDoc
// closes the file, takes the job out of the queue and announces the file.
// Nothing is thrown for a failure: a step returns false, after a box where the user can help. The
// lock is released on every way out, by JobLock.
#include "umpd/UmDriver.h"

#include <exception>
#include <optional>
#include <span>

#include "postscript/painting/ClearPdfObjects.h"
#include "umpd/Folders.h"
#include "umpd/NameEscapes.h"
#include "umpd/ProtectedMode.h"
#include "umpd/Report.h"
#include "umpd/SetFilename.h"
#include "umpd/Trace.h"

namespace umpd {
namespace {

constexpr int launcherAttempts = 10;
constexpr uint32_t launcherStartTime = 540;  // milliseconds

constexpr uint32_t cancelJob = 3;
constexpr uint32_t deleteJob = 5;

// Objects have a name space of their own from Windows 2000 on.
std::u16string objectName(Platform& platform, std::u16string_view space, std::u16string_view name) {
  std::u16string result;
  if (platform.version.isWin2kOrLater()) {
    result = space;
  }
  result += name;
  return result;
}

// For a box: the words that users have always seen for a missing name.
std::string shownName(Platform& platform, const char16_t* name) {
  return name ? platform.text.narrow(name) : "(null)";
}

}  // namespace

// The lock is made or opened here, and not yet waited for.
UmDriver::UmDriver(Platform& platform)
    : settings(platform),
      infoReader(platform),
      jobMutex(platform, objectName(platform, u"Global\\", u"umdriver")),
      outFile(platform.files),
      impersonation(platform) {
  clear();
}

UmDriver::~UmDriver() {
  clear();
}

// Settings come in this order: what the installer forces on all users is written to the registry
// first, then everything is read from there.
bool UmDriver::init(PrinterHandle handle, uint32_t job, const char16_t* name) {
  const JobLock lock(*this);
  Platform& platform = settings.platform;
  settings.setPrinterName({});
  printerHandle = handle;
  jobId = job;
  userName = platform.accounts.userName().value_or(std::u16string());
  infoReader.printer = handle;
  if (handle == PrinterHandle{} && !openNamedPrinter(name)) {
    return false;
  }

  // The spooler's name for the printer is asked for as a sign of life: the settings have one.
  const PrinterInfo* const info = infoReader.readPrinterInfo2();
  if (!info || !info->printerName) {
    const auto number = static_cast<uint32_t>(handle);
    showErrorBox(platform, "umpd - Could not retrieve printer info - handle [%d](0x%x), [%s]",
                 static_cast<int32_t>(number), number, shownName(platform, name).c_str());
    return false;
  }
  settings.applyOverrideUserSettings();
  settings.loadSettings();
  if (platform.version.isNt4()) {
    handSettingsToDriver();
  }
  if (platform.version.isWin9x()) {
    settings.setRegistryDword(u"printerData4", 1);
  }

  passthru = settings.getSettingInt(u"passthru", 0) != 0;
  if (!passthru) {
    findDocument();
  } else if (printerHandle == PrinterHandle{}) {
    printerHandle = settings.printer.get();
  }
  status = statusInitialised;
  return true;
}

// Without the spooler's handle the job opens the printer itself. A name in port form has been
// turned into the name of a printer by then.
bool UmDriver::openNamedPrinter(const char16_t* name) {
  if (!name) {
    showErrorBox(settings.platform, "umpd - No printer handle or name");
    return false;
  }
  settings.setPrinterName(name);
  if (!settings.printer && !openSettingsPrinter(settings, printerAccessUse)) {
    showErrorBox(settings.platform, "umpd - Could not open printer [%s]",
                 shownName(settings.platform, name).c_str());
    return false;
  }
  infoReader.printer = settings.printer.get();
  return true;
}

// The driver of NT 4 reads a file in the system directory, which the job's user may not write.
void UmDriver::handSettingsToDriver() {
  impersonation.revertToSpooler();
  if (!settings.copyNameValuesToPrinterDriverConfigFile()) {
    reportLastError(settings.platform, u"copyNameValuesToPrinterDriverConfigFile failed",
                    serviceNotification);
  }
  impersonation.returnToClient();
}

// With handle and job number the spooler is asked for this very job; otherwise the newest job in
// the printer's queue is taken for it.
void UmDriver::findDocument() {
  if (printerHandle == PrinterHandle{} || jobId == 0) {
    const uint32_t newest = getCurrentPrintJobDocName(settings, docName);
    if (jobId == 0) {
      jobId = newest;
    }
  } else if (const auto document = settings.platform.spooler.jobDocument(printerHandle, jobId)) {
    docName = *document;
  }
}

// A job in passthru mode without a handle goes to a file like any other. `bytesWritten` counts the
// last write on the way to the printer, and all of them on the way to the file.
bool UmDriver::write(const std::byte* buffer, uint32_t length) {
  const JobLock lock(*this);
  const std::span data(buffer, buffer ? length : 0);
  if (passthru && printerHandle != PrinterHandle{}) {
    settings.platform.spooler.writePrinter(printerHandle, data, bytesWritten);
    return bytesWritten == length;
  }
  if (outFile.handle == FileHandle{} && !(prepareLauncher() && createOutFile())) {
    return false;
  }
  if (!outFile.write(data)) {
    traceMessage("Error writing to %s\n", outputPath);
    return false;
  }
  bytesWritten += length;
  return true;
}

// After a write that failed the file has a gap: later bytes would make it look whole.
bool UmDriver::writeUnlessFailed(const std::byte* buffer, uint32_t length) {
  if ((status & statusFailed) != 0) {
    return false;
  }
  try {
    if (write(buffer, length)) {
      return true;
    }
  } catch (const std::exception&) {
    // No memory. These bytes are missing, so that no others may follow.
  }
  status |= statusFailed;
  return false;
}

// The launcher has to run even if it gets no message yet: it gets the file in the end.
bool UmDriver::prepareLauncher() {
  const bool finish = settings.getSettingInt(u"FinishPrintEv", 0) != 0;
  const bool showStatus = !finish && settings.getSettingInt(u"showPrintStatusWin", 1) != 0;
  traceMessage("umdriver::write showUserInerface = %d\n", showStatus);
  if (finish) {
    return true;
  }
  LauncherProxy launcher(settings.platform);
  if (!ensureLauncherRuns(launcher)) {
    return false;
  }
  if (showStatus) {
    launcher.startprint(settings.effectiveName());
  }
  return true;
}

// The driver of NT 4 runs in the spooler, which must not start programs for its user.
bool UmDriver::ensureLauncherRuns(LauncherProxy& launcher) {
  Platform& platform = settings.platform;
  if (launcher.isLauncherRunning()) {
    return true;
  }
  if (platform.version.isNt4()) {
    reportLastError(
        platform,
        u"Error:tqpmsnd.exe is not running.  Please run it before printing to Quillpress.",
        serviceNotification);
    return false;
  }
  for (int attempt = 0; attempt < launcherAttempts; ++attempt) {
    traceMessage("Launcher not running, attempting to start it\n");
    launcher.startLauncher();
    platform.clock.sleep(launcherStartTime);
    if (launcher.isLauncherRunning()) {
      return true;
    }
  }
  reportLastError(platform, u"Error:tqpmsnd.exe is not running - and attempt to start it failed.",
                  serviceNotification);
  return false;
}

// True also if the file cannot be created: `outFile` then holds invalidFile, and the write fails
// with it, without a box. The last lines are for a platform that returns no handle at all.
bool UmDriver::createOutFile() {
  Platform& platform = settings.platform;
  if (!SetFilename(settings).setOutputFilename(docName, outputPath, savePathCapacity)) {
    reportLastError(platform, u"setOutputFilename failed", serviceNotification);
    return false;
  }
  outFile.handle = platform.files.openForWriting(outputPath, Disposition::createAlways);
  if (outFile.handle == invalidFile) {
    protectedModeFallback();
  }
  if (outFile.handle != FileHandle{}) {
    return true;
  }
  reportLastError(platform, outputPath, serviceNotification);
  traceMessage("Error creating %s\n", outputPath);
  return false;
}

// A browser in Protected Mode may write its own shadow of the user's folders only.
void UmDriver::protectedModeFallback() {
  Platform& platform = settings.platform;
  const OwnedModule browser = platform.modules.load(u"ieframe.dll");
  if (!browser) {
    return;
  }
  const FunctionAddress call = platform.modules.find(browser.get(), "IEIsProtectedModeProcess");
  if (call == FunctionAddress{} || !platform.processes.isProtectedMode(call)) {
    return;
  }
  outputPath = virtualizedTempPath(platform) + outputPath.substr(outputPath.rfind(u'\\') + 1);
  if (outputPath.size() >= pathCapacity) {
    outputPath.resize(pathCapacity - 1);
  }
  outFile.handle = platform.files.openForWriting(outputPath, Disposition::createAlways);
}

// A job of which no write reached a file has nothing to announce and stays in the queue.
bool UmDriver::endDoc() {
  traceMessage("> UmDriver::endDoc() %x\n", this);
  const JobLock lock(*this);
  traceMessage("> UmDriver::inside mutex %x\n", this);
  if (doPrint != 0) {
    settings.setRegistryDword(u"DoPrint", 0);
  }
  traceMessage("> finishPrintEv = %d\n", settings.getSettingInt(u"FinishPrintEv", 0));
  if (passthru || outFile.handle == FileHandle{}) {
    resetJob();
    return true;
  }
  outFile.close();
  if (!settings.platform.version.isWin9x()) {
    deleteSpoolJob();
  }
  announceFile();
  resetJob();
  traceMessage("< UmDriver::endDoc() %x \n", this);
  return true;
}

// The file has taken the job's place in the queue; the file of a job in trouble goes with it.
void UmDriver::deleteSpoolJob() {
  Platform& platform = settings.platform;
  const PrinterHandle handle =
      printerHandle != PrinterHandle{} ? printerHandle : settings.printer.get();
  if (!checkJobStatus(platform, handle, jobId)) {
    platform.files.remove(outputPath);
  }
  platform.spooler.setJob(handle, jobId, platform.version.isWin9x() ? cancelJob : deleteJob);
}

// A launcher that has gone away gets nothing, and nothing is reported.
void UmDriver::announceFile() {
  LauncherProxy launcher(settings.platform);
  const std::u16string document = decodeNameEscapes(docName);
  if (settings.getSettingInt(u"FinishPrintEv", 0) != 0) {
    signalFinishedPrint(document);
  } else if (launcher.isLauncherRunning()) {
    launcher.stopprint(settings.effectiveName(), document, outputPath);
  }
}

// For the client that has set FinishPrintEv, who also has made the event.
void UmDriver::signalFinishedPrint(const std::u16string& document) {
  Platform& platform = settings.platform;
  settings.setRegistryString(u"DocName", document);
  settings.setRegistryString(u"lastfile", outputPath);
  traceMessage("> UmDriver::endDoc() about to signal finished print\n");
  const std::u16string name = objectName(platform, u"Local\\", u"FinishPrintEv");
  const OwnedObject event = platform.objects.openEvent(name);
  if (event) {
    platform.objects.setEvent(event.get());
  } else {
    traceMessage("Open TqpEvent [%s] failed.\n", name);
  }
}

// A copy: the original may be emptied while the caller uses it.
std::u16string UmDriver::documentName() const {
  const std::lock_guard lock(nameMutex_);
  return docName;
}

// The job can be recognised as a record still, but no entry takes it for a running one.
void UmDriver::resetJob() {
  clear();
  status |= statusEnded;
}

void UmDriver::readDoPrint() {
  doPrint = settings.getSettingInt(u"DoPrint", 0);
}

// A job's beginning and end empty the converter's list of objects: it belongs to the process.
void UmDriver::clear() {
  magic = magicWord;
  printerHandle = {};
  jobId = 0;
  status = 0;
  outputPath.clear();
  userName.clear();
  {
    const std::lock_guard lock(nameMutex_);
    docName.clear();
  }
  bytesWritten = 0;
  postscript::clearPdfObjects();
}

}  // namespace umpd
