// The steps of JobEntries without its handles. A job's status decides what it is good for: writing
// and closing ask for a record only, the other steps for a job that has not ended.
#include "umpd/DrvSpl.h"

#include "umpd/Trace.h"

namespace umpd {
namespace {

constexpr uint32_t anyStatus = 0;

}  // namespace

UmDriver* DrvSplStartDoc(JobRecords& records, PrinterHandle printer, uint32_t jobId) {
  traceMessage("DrvSplStartDoc hPrinter=%d\n", printer);
  UmDriver* const job = records.start<UmDriver>(printer, jobId, nullptr);
  if (!job) {
    traceMessage("DrvSplStartDoc driver init failed\n");
  }
  return job;
}

uint32_t DrvSplWritePrinter(JobRecords& records, const void* address, const void* buffer,
                            uint32_t length, uint32_t& written) {
  const JobPointer job =
      records.findForWork(address, anyStatus, "DrvSplWritePrinter - invalid parms");
  if (!job) {
    return 0;
  }
  // Before the write, so that callers find the whole length there when it fails, too.
  written = length;
  if ((job->status & statusFailed) != 0) {
    traceMessage("DrvSplWritePrinter returning FALSE\n");
  }
  return job->writeUnlessFailed(static_cast<const std::byte*>(buffer), length) ? 1 : 0;
}

// Not by beginEnd: the record stays good for its close.
bool DrvSplEndDoc(JobRecords& records, const void* address) {
  const JobPointer job =
      records.findForWork(address, statusInitialised, "DrvSplEndDoc - invalid parms");
  return job && job->endDoc();
}

void DrvSplClose(JobRecords& records, const void* address) {
  // What this returns ends at once, and the record with it.
  records.beginEnd(address, anyStatus, "DrvSplClose - invalid parms");
}

uint32_t DrvSplStartPage(JobRecords& records, const void* address) {
  return records.findForWork(address, statusInitialised, "DrvSplStartPage invalid parms") ? 1 : 0;
}

uint32_t DrvSplEndPage(JobRecords& records, const void* address) {
  return records.findForWork(address, statusInitialised, "DrvSplEndPage invalid parms") ? 1 : 0;
}

void DrvSplAbort(JobRecords& records, const void* address) {
  if (const JobPointer job =
          records.findForWork(address, statusInitialised, "DrvSplAbort invalid parms")) {
    job->status |= statusAborted;
  }
}

}  // namespace umpd
