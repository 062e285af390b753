#include "umpd/platform/simulated/SimulatedSpooler.h"

#include <algorithm>

#include "umpd/WideText.h"

namespace {

constexpr std::uint32_t errorInvalidHandle = 6;
constexpr std::uint32_t errorInvalidParameter = 87;
constexpr std::uint32_t errorInvalidPrinterName = 1801;

constexpr std::uint32_t printerRecordSize = 136;
constexpr std::uint32_t jobRecordSize = 144;
constexpr TokenHandle clientToken{0x77};

std::uint32_t textSize(const std::optional<std::u16string>& text) {
  return text ? static_cast<std::uint32_t>(text->size() + 1) : 0;
}

std::uint32_t sizeOf(const SimulatedPrinter& printer) {
  return printerRecordSize + textSize(printer.name) + textSize(printer.port) +
         textSize(printer.driver);
}

std::span<const JobInfo> chosen(const SimulatedPrinter& printer, std::uint32_t first,
                                std::uint32_t count) {
  const std::span<const JobInfo> all(printer.jobs);
  const auto rest = all.subspan(std::min<std::size_t>(first, all.size()));
  return rest.first(std::min<std::size_t>(count, rest.size()));
}

std::uint32_t sizeOf(std::span<const JobInfo> jobs) {
  std::uint32_t size = 0;
  for (const JobInfo& job : jobs)
    size += jobRecordSize + textSize(job.document) + textSize(job.statusText);
  return size;
}

PrinterInfo infoOf(const SimulatedPrinter& printer) {
  return {printer.name, printer.port, printer.driver,
          static_cast<std::uint32_t>(printer.jobs.size())};
}

// No buffer is too small for nothing.
SizeAnswer sizeAnswer(Journal& journal, std::uint32_t needed) {
  if (needed == 0) return {true, 0, 0};
  journal.fails(errorInsufficientBuffer);
  return {false, needed, errorInsufficientBuffer};
}

SizeAnswer failure(Journal& journal) {
  return {false, 0, journal.lastError};
}

}  // namespace

SimulatedPrinter& SimulatedSpooler::add(const std::u16string& name, const std::u16string& port,
                                        const std::u16string& driver) {
  installed.push_back(std::make_unique<SimulatedPrinter>());
  SimulatedPrinter& added = *installed.back();
  added.name = name;
  added.port = port;
  added.driver = driver;
  return added;
}

SimulatedPrinter* SimulatedSpooler::find(const std::u16string& name) {
  for (const auto& each : installed)
    if (each->name && equalsIgnoringCase(*each->name, name)) return each.get();
  return nullptr;
}

PrinterHandle SimulatedSpooler::handleOf(const SimulatedPrinter& printer) {
  for (const auto& each : installed)
    if (each.get() == &printer) {
      const PrinterHandle handle{journal.newHandle()};
      handles[handle] = each.get();
      return handle;
    }
  return {};
}

SimulatedPrinter* SimulatedSpooler::opened(PrinterHandle printer) {
  const auto found = handles.find(printer);
  if (found != handles.end()) return found->second;
  journal.fails(errorInvalidHandle);
  return nullptr;
}

OwnedPrinter SimulatedSpooler::openPrinter(const std::u16string& name, const DevMode& devMode,
                                           std::uint32_t access) {
  lastDevMode = devMode;
  lastAccess = access;
  if (!journal.may("openPrinter", name)) return {};
  if (const SimulatedPrinter* found = find(name)) return OwnedPrinter(*this, handleOf(*found));
  journal.fails(errorInvalidPrinterName);
  return {};
}

void SimulatedSpooler::close(PrinterHandle printer) {
  journal.note("closePrinter");
  handles.erase(printer);
}

SizeAnswer SimulatedSpooler::printerSize(PrinterHandle printer) {
  if (!journal.may("printerSize")) return failure(journal);
  const SimulatedPrinter* found = opened(printer);
  return found ? sizeAnswer(journal, sizeOf(*found)) : failure(journal);
}

std::optional<PrinterInfo> SimulatedSpooler::printer(PrinterHandle printer, std::uint32_t size) {
  if (!journal.may("printer")) return std::nullopt;
  const SimulatedPrinter* found = opened(printer);
  if (!found) return std::nullopt;
  if (sizeOf(*found) > size) {
    journal.fails(errorInsufficientBuffer);
    return std::nullopt;
  }
  return infoOf(*found);
}

SizeAnswer SimulatedSpooler::jobsSize(PrinterHandle printer, std::uint32_t first,
                                      std::uint32_t count) {
  if (!journal.may("jobsSize")) return failure(journal);
  const SimulatedPrinter* found = opened(printer);
  return found ? sizeAnswer(journal, sizeOf(chosen(*found, first, count))) : failure(journal);
}

std::optional<std::vector<JobInfo>> SimulatedSpooler::jobs(PrinterHandle printer,
                                                           std::uint32_t first, std::uint32_t count,
                                                           std::uint32_t size) {
  if (!journal.may("jobs")) return std::nullopt;
  const SimulatedPrinter* found = opened(printer);
  if (!found) return std::nullopt;
  const auto wanted = chosen(*found, first, count);
  if (sizeOf(wanted) > size) {
    journal.fails(errorInsufficientBuffer);
    return std::nullopt;
  }
  return std::vector<JobInfo>(wanted.begin(), wanted.end());
}

std::uint32_t SimulatedSpooler::printersSize() {
  if (!journal.may("printersSize")) return 0;
  std::uint32_t size = 0;
  for (const auto& each : installed) size += sizeOf(*each);
  return size;
}

std::optional<std::vector<PrinterInfo>> SimulatedSpooler::printers(std::uint32_t size) {
  if (!journal.may("printers")) return std::nullopt;
  std::uint32_t needed = 0;
  std::vector<PrinterInfo> all;
  for (const auto& each : installed) {
    needed += sizeOf(*each);
    all.push_back(infoOf(*each));
  }
  if (needed > size) {
    journal.fails(errorInsufficientBuffer);
    return std::nullopt;
  }
  return all;
}

std::uint32_t SimulatedSpooler::driverDirectorySize(bool narrow) {
  if (!journal.may("driverDirectorySize", narrow ? u"narrow" : u"wide")) return 0;
  return static_cast<std::uint32_t>((driverDirectoryPath.size() + 1) * (narrow ? 1 : 2));
}

std::optional<std::u16string> SimulatedSpooler::driverDirectory(bool narrow, std::uint32_t size) {
  if (!journal.may("driverDirectory", narrow ? u"narrow" : u"wide")) return std::nullopt;
  if ((driverDirectoryPath.size() + 1) * (narrow ? 1 : 2) > size) {
    journal.fails(errorInsufficientBuffer);
    return std::nullopt;
  }
  return driverDirectoryPath;
}

std::optional<std::u16string> SimulatedSpooler::jobDocument(PrinterHandle printer,
                                                            std::uint32_t jobId) {
  if (!journal.may("jobDocument", decimalText(jobId))) return std::nullopt;
  if (const SimulatedPrinter* found = opened(printer)) {
    for (const JobInfo& job : found->jobs)
      if (job.jobId == jobId) return job.document;
    journal.fails(errorInvalidParameter);
  }
  return std::nullopt;
}

bool SimulatedSpooler::setJob(PrinterHandle printer, std::uint32_t jobId, std::uint32_t command) {
  if (!journal.may("setJob", decimalText(jobId) + u' ' + decimalText(command))) return false;
  SimulatedPrinter* found = opened(printer);
  if (!found) return false;
  const auto erased =
      std::erase_if(found->jobs, [&](const JobInfo& job) { return job.jobId == jobId; });
  return erased != 0 || journal.fails(errorInvalidParameter);
}

bool SimulatedSpooler::writePrinter(PrinterHandle printer, std::span<const std::byte> data,
                                    std::uint32_t& written) {
  written = 0;
  if (!journal.may("writePrinter")) return false;
  SimulatedPrinter* found = opened(printer);
  if (!found) return false;
  const auto taken = data.first(std::min<std::size_t>(data.size(), writeLimit));
  found->received.insert(found->received.end(), taken.begin(), taken.end());
  written = static_cast<std::uint32_t>(taken.size());
  return true;
}

TokenHandle SimulatedSpooler::revertToPrinterSelf(FunctionAddress /*call*/) {
  if (!journal.may("revertToPrinterSelf") || !impersonating) return {};
  impersonating = false;
  return clientToken;
}

bool SimulatedSpooler::impersonatePrinterClient(FunctionAddress /*call*/, TokenHandle token) {
  if (!journal.may("impersonatePrinterClient")) return false;
  if (token != clientToken) return journal.fails(errorInvalidHandle);
  impersonating = true;
  return true;
}
