// Sizes are those of the system's records with their texts in the code page, so that they grow and
// shrink with what a test puts there. Handles point to printers, which stay where they are.
#include "umpd/platform/simulated/SimulatedSpooler.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "umpd/platform/WideText.h"

namespace umpd {
namespace {

constexpr uint32_t errorInvalidHandle = 6;
constexpr uint32_t errorInvalidParameter = 87;
constexpr uint32_t errorInvalidPrinterName = 1801;

// Of the records on a 64-bit system.
constexpr uint32_t printerRecordSize = 136;
constexpr uint32_t jobRecordSize = 160;
constexpr TokenHandle clientToken{0x77};

uint32_t textSize(const std::optional<std::u16string>& text) {
  return text ? static_cast<uint32_t>(text->size() + 1) : 0;
}

uint32_t sizeOf(const SimulatedPrinter& printer) {
  return printerRecordSize + textSize(printer.name) + textSize(printer.port) +
         textSize(printer.driver);
}

// As many of the jobs as there are from `first` on.
std::span<const JobInfo> chosen(const SimulatedPrinter& printer, uint32_t first, uint32_t count) {
  const std::span<const JobInfo> all(printer.jobs);
  const auto rest = all.subspan(std::min<size_t>(first, all.size()));
  return rest.first(std::min<size_t>(count, rest.size()));
}

uint32_t sizeOf(std::span<const JobInfo> jobs) {
  uint32_t size = 0;
  for (const JobInfo& job : jobs) {
    size += jobRecordSize + textSize(job.document) + textSize(job.statusText);
  }
  return size;
}

PrinterInfo infoOf(const SimulatedPrinter& printer) {
  return {printer.name, printer.port, printer.driver,
          printer.reportedJobs.value_or(static_cast<uint32_t>(printer.jobs.size()))};
}

// No buffer is too small for nothing.
SizeAnswer sizeAnswer(Journal& journal, uint32_t needed) {
  if (needed == 0) {
    return {true, 0, 0};
  }
  journal.fails(errorInsufficientBuffer);
  return {false, needed, errorInsufficientBuffer};
}

// The size is 0, which callers look at.
SizeAnswer failure(Journal& journal) {
  return {false, 0, journal.lastError};
}

}  // namespace

SimulatedPrinter& SimulatedSpooler::add(const std::u16string& name, const std::u16string& port,
                                        const std::u16string& driver) {
  installed_.push_back(std::make_unique<SimulatedPrinter>());
  SimulatedPrinter& added = *installed_.back();
  added.name = name;
  added.port = port;
  added.driver = driver;
  return added;
}

SimulatedPrinter* SimulatedSpooler::find(const std::u16string& name) {
  for (const auto& each : installed_) {
    if (each->name && equalsIgnoringCase(*each->name, name)) {
      return each.get();
    }
  }
  return nullptr;
}

PrinterHandle SimulatedSpooler::handleOf(const SimulatedPrinter& printer) {
  for (const auto& each : installed_) {
    if (each.get() == &printer) {
      const PrinterHandle handle{journal_.newHandle()};
      handles_[handle] = each.get();
      return handle;
    }
  }
  return {};
}

// Null, and the error, for a handle that is none.
SimulatedPrinter* SimulatedSpooler::opened(PrinterHandle printer) {
  const auto found = handles_.find(printer);
  if (found != handles_.end()) {
    return found->second;
  }
  journal_.fails(errorInvalidHandle);
  return nullptr;
}

// What the printer was opened with is kept for tests, also if it could not be.
OwnedPrinter SimulatedSpooler::openPrinter(const std::u16string& name, const DevMode& devMode,
                                           uint32_t access) {
  lastDevMode = devMode;
  lastAccess = access;
  if (!journal_.may("openPrinter", name)) {
    return {};
  }
  if (const SimulatedPrinter* found = find(name)) {
    return OwnedPrinter(*this, handleOf(*found));
  }
  journal_.fails(errorInvalidPrinterName);
  return {};
}

void SimulatedSpooler::close(PrinterHandle printer) {
  journal_.noteReturn("closePrinter");
  handles_.erase(printer);
}

SizeAnswer SimulatedSpooler::printerSize(PrinterHandle printer) {
  if (!journal_.may("printerSize")) {
    return failure(journal_);
  }
  const SimulatedPrinter* found = opened(printer);
  return found ? sizeAnswer(journal_, sizeOf(*found)) : failure(journal_);
}

std::optional<PrinterInfo> SimulatedSpooler::printer(PrinterHandle printer, uint32_t size) {
  if (!journal_.may("printer")) {
    return std::nullopt;
  }
  const SimulatedPrinter* found = opened(printer);
  if (!found) {
    return std::nullopt;
  }
  if (sizeOf(*found) > size) {
    journal_.fails(errorInsufficientBuffer);
    return std::nullopt;
  }
  return infoOf(*found);
}

SizeAnswer SimulatedSpooler::jobsSize(PrinterHandle printer, uint32_t first, uint32_t count) {
  if (!journal_.may("jobsSize")) {
    return failure(journal_);
  }
  const SimulatedPrinter* found = opened(printer);
  return found ? sizeAnswer(journal_, sizeOf(chosen(*found, first, count))) : failure(journal_);
}

std::optional<std::vector<JobInfo>> SimulatedSpooler::jobs(PrinterHandle printer, uint32_t first,
                                                           uint32_t count, uint32_t size) {
  if (!journal_.may("jobs")) {
    return std::nullopt;
  }
  const SimulatedPrinter* found = opened(printer);
  if (!found) {
    return std::nullopt;
  }
  const auto wanted = chosen(*found, first, count);
  if (sizeOf(wanted) > size) {
    journal_.fails(errorInsufficientBuffer);
    return std::nullopt;
  }
  return std::vector<JobInfo>(wanted.begin(), wanted.end());
}

uint32_t SimulatedSpooler::printersSize() {
  if (!journal_.may("printersSize")) {
    return 0;
  }
  uint32_t size = 0;
  for (const auto& each : installed_) {
    size += sizeOf(*each);
  }
  return size;
}

std::optional<std::vector<PrinterInfo>> SimulatedSpooler::printers(uint32_t size) {
  if (!journal_.may("printers")) {
    return std::nullopt;
  }
  uint32_t needed = 0;
  std::vector<PrinterInfo> all;
  for (const auto& each : installed_) {
    needed += sizeOf(*each);
    all.push_back(infoOf(*each));
  }
  if (needed > size) {
    journal_.fails(errorInsufficientBuffer);
    return std::nullopt;
  }
  return all;
}

uint32_t SimulatedSpooler::driverDirectorySize(bool narrow) {
  if (!journal_.may("driverDirectorySize", narrow ? u"narrow" : u"wide")) {
    return 0;
  }
  return static_cast<uint32_t>((driverDirectoryPath.size() + 1) * (narrow ? 1 : 2));
}

std::optional<std::u16string> SimulatedSpooler::driverDirectory(bool narrow, uint32_t size) {
  if (!journal_.may("driverDirectory", narrow ? u"narrow" : u"wide")) {
    return std::nullopt;
  }
  if ((driverDirectoryPath.size() + 1) * (narrow ? 1 : 2) > size) {
    journal_.fails(errorInsufficientBuffer);
    return std::nullopt;
  }
  return driverDirectoryPath;
}

std::optional<std::u16string> SimulatedSpooler::jobDocument(PrinterHandle printer, uint32_t jobId) {
  if (!journal_.may("jobDocument", decimalText(jobId))) {
    return std::nullopt;
  }
  if (const SimulatedPrinter* found = opened(printer)) {
    for (const JobInfo& job : found->jobs) {
      if (job.jobId == jobId) {
        return job.document;
      }
    }
    journal_.fails(errorInvalidParameter);
  }
  return std::nullopt;
}

// Both commands take the job out of the queue.
bool SimulatedSpooler::setJob(PrinterHandle printer, uint32_t jobId, uint32_t command) {
  if (!journal_.may("setJob", decimalText(jobId) + u' ' + decimalText(command))) {
    return false;
  }
  SimulatedPrinter* found = opened(printer);
  if (!found) {
    return false;
  }
  const auto erased =
      std::erase_if(found->jobs, [&](const JobInfo& job) { return job.jobId == jobId; });
  return erased != 0 || journal_.fails(errorInvalidParameter);
}

// To take less than all is no failure of the call: only the count shows it.
bool SimulatedSpooler::writePrinter(PrinterHandle printer, std::span<const std::byte> data,
                                    uint32_t& written) {
  written = 0;
  if (!journal_.may("writePrinter")) {
    return false;
  }
  SimulatedPrinter* found = opened(printer);
  if (!found) {
    return false;
  }
  const auto taken = data.first(std::min<size_t>(data.size(), writeLimit));
  found->received.insert(found->received.end(), taken.begin(), taken.end());
  written = static_cast<uint32_t>(taken.size());
  return true;
}

// Without a client there is nothing to step out of, and no token.
TokenHandle SimulatedSpooler::revertToPrinterSelf(FunctionAddress /*call*/) {
  if (!journal_.may("revertToPrinterSelf") || !impersonating) {
    return {};
  }
  impersonating = false;
  return clientToken;
}

bool SimulatedSpooler::impersonatePrinterClient(FunctionAddress /*call*/, TokenHandle token) {
  if (!journal_.mayReturn("impersonatePrinterClient")) {
    return false;
  }
  if (token != clientToken) {
    return journal_.fails(errorInvalidHandle);
  }
  impersonating = true;
  return true;
}

}  // namespace umpd
