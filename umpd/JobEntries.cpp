// Each entry finds its job, or complains in a box, and makes one call of it. The words of the boxes
// are part of what users know of the product, also where they name another call.
#include "umpd/JobEntries.h"

#include <span>

#include "umpd/Report.h"
#include "umpd/SettingTexts.h"
#include "umpd/Trace.h"
#include "umpd/UmDriver2k.h"

namespace umpd {
namespace {

JobHandle handleOf(const UmDriver* job) {
  return static_cast<JobHandle>(reinterpret_cast<uintptr_t>(job));
}

// What a handle was made of: records lie below 4 GiB.
const void* addressOf(JobHandle handle) {
  return reinterpret_cast<const void*>(uintptr_t{handle});
}

}  // namespace

// The box shows the name as a null text: it is the only name that is refused.
JobHandle DocStart(JobRecords& records, const char16_t* printerName) {
  if (!printerName) {
    showErrorBox(records.platform, "DocStart - invalid printer name %s\n", "(null)");
    return 0;
  }
  return handleOf(records.start<UmDriver>({}, 0, printerName));
}

JobHandle DocStart2K(JobRecords& records, PrinterHandle printer, uint32_t jobId,
                     const char16_t* printerName, const char16_t* docName) {
  traceMessage("Printer handle=%d, jobId=%d, printerName=[%s], docName=[%s]\n", printer, jobId,
               printerName, docName);
  return handleOf(records.start<UmDriver2k>(printer, jobId, docName));
}

uint32_t DocWrite(JobRecords& records, JobHandle handle, const void* buffer, uint32_t length) {
  const JobPointer job =
      records.findForWork(addressOf(handle), statusInitialised, "DocWrite invalid parms");
  return job && job->writeUnlessFailed(static_cast<const std::byte*>(buffer), length) ? 1 : 0;
}

uint32_t DocEnd(JobRecords& records, JobHandle handle) {
  // While the job ends, which may have to wait for others, its settings can still be read.
  const EndingJob job =
      records.beginEnd(addressOf(handle), statusInitialised, "DocEnd invalid parms");
  return job && job->endDoc() ? 1 : 0;
}

uint32_t getIntVal(JobRecords& records, const void* address, const char16_t* key,
                   uint32_t defaultValue) {
  // The words name another call than this one. They are what users have always seen.
  const JobPointer job = records.find(address, statusInitialised, "getPrinterName invalid parms");
  return job ? job->settings.getSettingInt(key, defaultValue) : defaultValue;
}

uint32_t getStringVal(JobRecords& records, const void* address, const char16_t* key,
                      char16_t* buffer, size_t size, const char16_t* defaultText) {
  const JobPointer job = records.find(address, statusInitialised, "getStringVal invalid parms");
  if (!job) {
    return 0;
  }
  copySettingText(job->settings, job->documentName(), key, buffer, size, defaultText);
  return 1;
}

uint32_t getStringMultibyte(JobRecords& records, const void* address, const char* key, char* buffer,
                            size_t size) {
  const JobPointer job =
      records.find(address, statusInitialised, "getStringMultibyte invalid parms");
  if (!job) {
    return 0;
  }
  copySettingUtf8(job->settings, job->documentName(), key, std::span(buffer, size));
  return 1;
}

}  // namespace umpd
