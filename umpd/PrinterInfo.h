// PrinterInfo: the questions that a job asks the spooler. What is this printer called, which job is
// the one in hand, is a job in trouble, which printer has a certain port.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "umpd/PrinterSettings.h"
#include "umpd/platform/Platform.h"

namespace umpd {

inline constexpr uint32_t printerAccessUse = 8;

// Reads a printer's record and keeps the last one read. The handle is not owned.
class PrinterInfoReader {
 public:
  explicit PrinterInfoReader(Platform& platform) : platform_(platform) {}

  // Null on failure; valid until the next read.
  const PrinterInfo* readPrinterInfo2();

  PrinterHandle printer{};

 private:
  Platform& platform_;
  std::optional<PrinterInfo> info_;
};

// The jobs in a printer's queue. `count` is what the printer's record says, 0 if the queue could
// not be read; fewer jobs may be listed, as some may have ended between the two questions.
struct PrinterJobs {
  uint32_t count = 0;
  std::vector<JobInfo> listed;
};
PrinterJobs getAllJobs(Platform& platform, PrinterHandle printer);

// The id of the newest job, which is taken for the one in hand, or 0; its document's name goes to
// `document`, which is left alone only if the printer has to be opened and cannot be.
uint32_t getCurrentPrintJobDocName(PrinterSettings& settings, std::u16string& document);

// False if the job is paused, blocked, offline, in error or out of paper.
bool checkJobStatus(Platform& platform, PrinterHandle printer, uint32_t jobId);

DevMode buildDevMode(std::u16string_view printerName);

// True if `settings` now holds a handle.
bool openSettingsPrinter(PrinterSettings& settings, uint32_t access);

}  // namespace umpd
