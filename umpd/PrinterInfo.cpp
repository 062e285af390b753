// The spooler answers each question in two calls, for the size and for the data. Between them its
// queue goes on changing: what was counted need not be what is listed.
#include "umpd/PrinterInfo.h"

#include <algorithm>
#include <cstddef>

#include "umpd/Trace.h"

namespace umpd {
namespace {

constexpr size_t documentCapacity = 260;
// The most that a device name holds beside its terminator.
constexpr size_t deviceNameLimit = 31;

struct StatusBit {
  uint32_t bit;
  const char* trace;
};
constexpr StatusBit statusBits[] = {
    {0x2, "Error Status\n"},     {0x20, "Offline Status\n"}, {0x40, "Paperout Status\n"},
    {0x200, "Blocked Status\n"}, {0x1, "Paused Status\n"},   {0x4, "Deleting Status\n"},
};
// All of them but the deletion: a job that its user deleted is in no trouble.
constexpr uint32_t troubleMask = 0x263;

// A question for a size may fail in one way: because there is no buffer.
bool answersSize(const SizeAnswer& answer) {
  return answer.succeeded || answer.error == errorInsufficientBuffer;
}

// The last in the queue; of several at one position the first. Positions are compared with sign, as
// they always were, so that an absurd one never wins.
const JobInfo* newestJob(const std::vector<JobInfo>& jobs) {
  const JobInfo* newest = nullptr;
  int32_t highest = -1;
  for (const JobInfo& job : jobs) {
    if (const auto position = static_cast<int32_t>(job.position); position > highest) {
      highest = position;
      newest = &job;
    }
  }
  return newest;
}

}  // namespace

const PrinterInfo* PrinterInfoReader::readPrinterInfo2() {
  if (printer == PrinterHandle{}) {
    traceMessage("readPrinterInfo2 - No printer handle");
    return nullptr;
  }
  info_.reset();
  const SizeAnswer size = platform_.spooler.printerSize(printer);
  if (!size.succeeded && size.needed == 0) {
    traceMessage("getPrinter failed: %s, bytes needed=%d\n", size.error, size.needed);
    return nullptr;
  }
  info_ = platform_.spooler.printer(printer, size.needed);
  if (info_) {
    return &*info_;
  }
  if (platform_.messages.lastError() == errorNotEnoughMemory) {
    traceMessage("readPrinterInfo2 - malloc failed");
  } else {
    traceMessage("readPrinterInfo2-failure to access the printer");
  }
  return nullptr;
}

// A printer without jobs and one that cannot be asked look the same.
PrinterJobs getAllJobs(Platform& platform, PrinterHandle printer) {
  traceMessage(">getAllJobs \n");
  Spooler& spooler = platform.spooler;
  const SizeAnswer printerSize = spooler.printerSize(printer);
  if (!answersSize(printerSize)) {
    return {};
  }
  const auto info = spooler.printer(printer, printerSize.needed);
  if (!info || info->jobs == 0) {
    return {};
  }
  traceMessage(" numjobs = %d\n", info->jobs);

  // One more than there are, in case another has come.
  const uint32_t asked = std::max(info->jobs, info->jobs + 1);
  const SizeAnswer jobsSize = spooler.jobsSize(printer, 0, asked);
  if (!answersSize(jobsSize)) {
    return {};
  }
  auto jobs = spooler.jobs(printer, 0, asked, jobsSize.needed);
  if (!jobs) {
    return {};
  }
  // The number is the spooler's word for it, and no reason to take memory for so many.
  jobs->resize(std::min<size_t>(jobs->size(), info->jobs));
  traceMessage("<getAllJobs numjobs = %d\n", info->jobs);
  return {info->jobs, std::move(*jobs)};
}

uint32_t getCurrentPrintJobDocName(PrinterSettings& settings, std::u16string& document) {
  traceMessage(">getCurrentPrintJobDocName %s printer %d\n", settings.printerName,
               settings.printer.get());
  if (!settings.printer && !openSettingsPrinter(settings, printerAccessUse)) {
    traceMessage("failed to openprinter\n");
    return 0;
  }
  document.clear();
  const PrinterJobs jobs = getAllJobs(settings.platform, settings.printer.get());
  if (jobs.count == 0) {
    traceMessage("getAllJobs returend 0\n");
    return 0;
  }
  traceMessage(">getCurrentPrintJobDocName - numjobss %d\n", jobs.count);
  const JobInfo* const newest = newestJob(jobs.listed);
  if (!newest) {
    return 0;
  }
  if (newest->document) {
    document = newest->document->substr(0, documentCapacity - 1);
    traceMessage("<getCurrentPrintJobDocName - job %d %s\n", newest->jobId, document);
  }
  return newest->jobId;
}

// A job that is not in the queue has no trouble that anybody knows of.
bool checkJobStatus(Platform& platform, PrinterHandle printer, uint32_t jobId) {
  const std::vector<JobInfo> jobs = getAllJobs(platform, printer).listed;
  const auto job = std::find_if(jobs.begin(), jobs.end(),
                                [&](const JobInfo& each) { return each.jobId == jobId; });
  if (job == jobs.end()) {
    return true;
  }
  traceMessage("Printer Status %x pStatus %s\n", job->status, job->statusText);
  for (const auto& [bit, trace] : statusBits) {
    if ((job->status & bit) != 0) {
      traceMessage("%s", trace);
    }
  }
  return (job->status & troubleMask) == 0;
}

DevMode buildDevMode(std::u16string_view printerName) {
  DevMode mode;
  // What follows the last separator; the whole name without one.
  mode.deviceName = printerName.substr(printerName.rfind(u'\\') + 1).substr(0, deviceNameLimit);
  mode.specVersion = 1025;
  mode.driverVersion = 1024;
  mode.size = 220;
  mode.driverExtra = 180;
  mode.fields = 0x14F13;
  mode.orientation = 1;
  // Letter, though the form says A4. The pair goes to the spooler like this.
  mode.paperSize = 1;
  mode.scale = 100;
  mode.copies = 1;
  mode.defaultSource = 15;
  mode.printQuality = 300;
  mode.color = 2;
  mode.duplex = 1;
  mode.ttOption = 3;
  mode.formName = u"A4";
  return mode;
}

// The device settings matter to the spooler only in that there are some: the bytes go through as
// they are.
bool openSettingsPrinter(PrinterSettings& settings, uint32_t access) {
  settings.printer = settings.platform.spooler.openPrinter(
      settings.printerName, buildDevMode(settings.printerName), access);
  if (settings.printer) {
    return true;
  }
  traceMessage("OpenPrinter(%s) failed - %s\n", settings.printerName,
               settings.platform.messages.lastError());
  return false;
}

}  // namespace umpd
