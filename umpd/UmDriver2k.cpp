// Unlike its base this job knows its document from its caller, and its printer only by the
// spooler's handle: the name that the settings are kept under is the one that the spooler reports.
#include "umpd/UmDriver2k.h"

#include <cstdint>

#include "umpd/Report.h"
#include "umpd/RunProcess.h"
#include "umpd/Trace.h"

namespace umpd {

UmDriver2k::~UmDriver2k() = default;

bool UmDriver2k::init(PrinterHandle handle, uint32_t job, const char16_t* document) {
  traceMessage("> UmDriver2k::init %x\n", this);
  const JobLock lock(*this);
  printerHandle = handle;
  jobId = job;
  infoReader.printer = handle;
  const PrinterInfo* const info = infoReader.readPrinterInfo2();
  if (!info || !info->printerName || info->printerName->empty()) {
    showErrorBox(settings.platform, "umpd - Could not retrieve printer info");
    return false;
  }
  // Not through setPrinterName: a name that begins with a backslash is no port's here.
  settings.printerName = *info->printerName;
  if (document) {
    docName = document;
  }
  // Waited for before the settings are read, as it may change them.
  runSetupProgram(settings);
  settings.applyOverrideUserSettings();
  settings.loadSettings();
  passthru = settings.getSettingInt(u"passthru", 0) != 0;
  status = statusInitialised;
  if (!passthru) {
    traceMessage("< UmDriver2k::init %x finishprintev = %d\n", this,
                 settings.getSettingInt(u"FinishPrintEv", 0));
  }
  return true;
}

}  // namespace umpd
