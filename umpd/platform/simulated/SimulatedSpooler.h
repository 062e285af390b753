// SimulatedSpooler: the simulated machine's printers with their queues.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "umpd/platform/Platform.h"
#include "umpd/platform/simulated/Journal.h"

namespace umpd {

struct SimulatedPrinter {
  std::optional<std::u16string> name;
  std::optional<std::u16string> port;
  std::optional<std::u16string> driver;
  std::vector<JobInfo> jobs;
  std::optional<uint32_t> reportedJobs;  // in the printer's record, if not as many as there are
  std::vector<std::byte> received;       // by writePrinter
};

class SimulatedSpooler : public Spooler {
 public:
  explicit SimulatedSpooler(Journal& journal) : journal_(journal) {}

  OwnedPrinter openPrinter(const std::u16string& name, const DevMode& devMode,
                           uint32_t access) override;
  void close(PrinterHandle printer) override;
  SizeAnswer printerSize(PrinterHandle printer) override;
  std::optional<PrinterInfo> printer(PrinterHandle printer, uint32_t size) override;
  SizeAnswer jobsSize(PrinterHandle printer, uint32_t first, uint32_t count) override;
  std::optional<std::vector<JobInfo>> jobs(PrinterHandle printer, uint32_t first, uint32_t count,
                                           uint32_t size) override;
  uint32_t printersSize() override;
  std::optional<std::vector<PrinterInfo>> printers(uint32_t size) override;
  uint32_t driverDirectorySize(bool narrow) override;
  std::optional<std::u16string> driverDirectory(bool narrow, uint32_t size) override;
  std::optional<std::u16string> jobDocument(PrinterHandle printer, uint32_t jobId) override;
  bool setJob(PrinterHandle printer, uint32_t jobId, uint32_t command) override;
  bool writePrinter(PrinterHandle printer, std::span<const std::byte> data,
                    uint32_t& written) override;
  TokenHandle revertToPrinterSelf(FunctionAddress call) override;
  bool impersonatePrinterClient(FunctionAddress call, TokenHandle token) override;

  // What a test arranges and looks at. References stay good as printers are added.
  SimulatedPrinter& add(const std::u16string& name, const std::u16string& port,
                        const std::u16string& driver = u"Tarnwick Quillpress");
  // Null if there is no printer of that name.
  SimulatedPrinter* find(const std::u16string& name);
  // A handle as a printing program would have it, which counts among the open ones.
  PrinterHandle handleOf(const SimulatedPrinter& printer);
  size_t openHandles() const { return handles_.size(); }

  std::u16string driverDirectoryPath = u"C:\\windows\\system32\\spool\\drivers\\x64";
  std::optional<DevMode> lastDevMode;
  uint32_t lastAccess = 0;
  bool impersonating = true;
  // The most that writePrinter takes at once.
  uint32_t writeLimit = 0xFFFFFFFF;

 private:
  SimulatedPrinter* opened(PrinterHandle printer);

  Journal& journal_;
  std::vector<std::unique_ptr<SimulatedPrinter>> installed_;
  std::map<PrinterHandle, SimulatedPrinter*> handles_;
};

}  // namespace umpd
