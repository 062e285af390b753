// The spooler fills a buffer with records, and the texts that they point to follow them in the
// same buffer: all is copied out before it goes.
// The narrow calls are used where the front end has always used them: their texts lose what the
// code page lacks, and settings are stored under the names that remain.
#include "umpd/platform/win32/Win32Types.h"
// The headers below build on <windows.h>.
#include <winspool.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "umpd/platform/win32/Win32Platform.h"

namespace umpd {
namespace {

using RevertToPrinterSelfCall = HANDLE(WINAPI*)();
using ImpersonatePrinterClientCall = BOOL(WINAPI*)(HANDLE);

constexpr DWORD recordLevel = 2;
constexpr DWORD directoryLevel = 1;
constexpr DWORD localPrintersAndConnections = 6;

HANDLE handleOf(PrinterHandle printer) {
  return as<HANDLE>(printer);
}

SizeAnswer sizeAnswer(BOOL succeeded, DWORD needed) {
  return {succeeded != FALSE, needed, succeeded ? 0 : static_cast<uint32_t>(GetLastError())};
}

PrinterInfo infoOf(const PRINTER_INFO_2A& record) {
  return {widenedIfAny(record.pPrinterName), widenedIfAny(record.pPortName),
          widenedIfAny(record.pDriverName), record.cJobs};
}

JobInfo infoOf(const JOB_INFO_2A& record) {
  return {record.JobId, widenedIfAny(record.pDocument), widenedIfAny(record.pStatus), record.Status,
          record.Position};
}

// Into a field that was zeros; the last character stays its terminator.
template <size_t capacity>
void copyName(wchar_t (&field)[capacity], const std::u16string& name) {
  std::copy_n(name.begin(), std::min(name.size(), capacity - 1), field);
}

// Only what the front end sets; the rest of the record is zeros.
void fill(DEVMODEW& record, const DevMode& mode) {
  copyName(record.dmDeviceName, mode.deviceName);
  record.dmSpecVersion = mode.specVersion;
  record.dmDriverVersion = mode.driverVersion;
  record.dmSize = mode.size;
  record.dmDriverExtra = mode.driverExtra;
  record.dmFields = mode.fields;
  record.dmOrientation = mode.orientation;
  record.dmPaperSize = mode.paperSize;
  record.dmScale = mode.scale;
  record.dmCopies = mode.copies;
  record.dmDefaultSource = mode.defaultSource;
  record.dmPrintQuality = mode.printQuality;
  record.dmColor = mode.color;
  record.dmDuplex = mode.duplex;
  record.dmTTOption = mode.ttOption;
  copyName(record.dmFormName, mode.formName);
}

}  // namespace

// The record is followed by the bytes that it announces for the driver, all zeros. The call may
// write into the texts that it is given.
OwnedPrinter Win32Spooler::openPrinter(const std::u16string& name, const DevMode& devMode,
                                       uint32_t access) {
  const DWORD size = std::max<DWORD>(sizeof(DEVMODEW), DWORD{devMode.size} + devMode.driverExtra);
  std::vector<BYTE> bytes(size);
  auto* const record = reinterpret_cast<DEVMODEW*>(bytes.data());
  fill(*record, devMode);
  std::u16string printer = name;
  wchar_t datatype[] = L"RAW";
  PRINTER_DEFAULTSW defaults{datatype, record, access};
  HANDLE handle = nullptr;
  if (!OpenPrinterW(reinterpret_cast<wchar_t*>(printer.data()), &handle, &defaults)) {
    return {};
  }
  return OwnedPrinter(*this, from<PrinterHandle>(handle));
}

void Win32Spooler::close(PrinterHandle printer) {
  const KeptLastError kept;
  ClosePrinter(handleOf(printer));
}

// Normally this "fails", as there is no buffer.
SizeAnswer Win32Spooler::printerSize(PrinterHandle printer) {
  DWORD needed = 0;
  const BOOL succeeded = GetPrinterA(handleOf(printer), recordLevel, nullptr, 0, &needed);
  return sizeAnswer(succeeded, needed);
}

std::optional<PrinterInfo> Win32Spooler::printer(PrinterHandle printer, uint32_t size) {
  RecordBuffer<PRINTER_INFO_2A> buffer(size);
  DWORD needed = 0;
  if (!buffer || !GetPrinterA(handleOf(printer), recordLevel, buffer.bytes(), size, &needed)) {
    return std::nullopt;
  }
  return infoOf(*buffer.records());
}

SizeAnswer Win32Spooler::jobsSize(PrinterHandle printer, uint32_t first, uint32_t count) {
  DWORD needed = 0;
  DWORD returned = 0;
  const BOOL succeeded =
      EnumJobsA(handleOf(printer), first, count, recordLevel, nullptr, 0, &needed, &returned);
  return sizeAnswer(succeeded, needed);
}

std::optional<std::vector<JobInfo>> Win32Spooler::jobs(PrinterHandle printer, uint32_t first,
                                                       uint32_t count, uint32_t size) {
  RecordBuffer<JOB_INFO_2A> buffer(size);
  DWORD needed = 0;
  DWORD returned = 0;
  if (!buffer || !EnumJobsA(handleOf(printer), first, count, recordLevel, buffer.bytes(), size,
                            &needed, &returned)) {
    return std::nullopt;
  }
  std::vector<JobInfo> jobs;
  for (const auto& record : buffer.records(returned)) {
    jobs.push_back(infoOf(record));
  }
  return jobs;
}

// Of a failure nothing is left but a size of 0.
uint32_t Win32Spooler::printersSize() {
  DWORD needed = 0;
  DWORD returned = 0;
  EnumPrintersA(localPrintersAndConnections, nullptr, recordLevel, nullptr, 0, &needed, &returned);
  return needed;
}

std::optional<std::vector<PrinterInfo>> Win32Spooler::printers(uint32_t size) {
  RecordBuffer<PRINTER_INFO_2A> buffer(size);
  DWORD needed = 0;
  DWORD returned = 0;
  if (!buffer || !EnumPrintersA(localPrintersAndConnections, nullptr, recordLevel, buffer.bytes(),
                                size, &needed, &returned)) {
    return std::nullopt;
  }
  std::vector<PrinterInfo> printers;
  for (const auto& record : buffer.records(returned)) {
    printers.push_back(infoOf(record));
  }
  return printers;
}

// In bytes, whichever call is made.
uint32_t Win32Spooler::driverDirectorySize(bool narrow) {
  DWORD needed = 0;
  if (narrow) {
    GetPrinterDriverDirectoryA(nullptr, nullptr, directoryLevel, nullptr, 0, &needed);
  } else {
    GetPrinterDriverDirectoryW(nullptr, nullptr, directoryLevel, nullptr, 0, &needed);
  }
  return needed;
}

std::optional<std::u16string> Win32Spooler::driverDirectory(bool narrow, uint32_t size) {
  // Room for a terminator, whatever the call does.
  RecordBuffer<wchar_t> buffer(size + sizeof(wchar_t));
  DWORD needed = 0;
  if (!buffer) {
    return std::nullopt;
  }
  if (narrow) {
    if (!GetPrinterDriverDirectoryA(nullptr, nullptr, directoryLevel, buffer.bytes(), size,
                                    &needed)) {
      return std::nullopt;
    }
    return widenedIfAny(reinterpret_cast<const char*>(buffer.bytes()));
  }
  if (!GetPrinterDriverDirectoryW(nullptr, nullptr, directoryLevel, buffer.bytes(), size,
                                  &needed)) {
    return std::nullopt;
  }
  return text(buffer.records());
}

// The first call has no buffer and always fails; what counts is the size that it leaves.
std::optional<std::u16string> Win32Spooler::jobDocument(PrinterHandle printer, uint32_t jobId) {
  DWORD needed = 0;
  GetJobW(handleOf(printer), jobId, recordLevel, nullptr, 0, &needed);
  if (needed == 0) {
    return std::nullopt;
  }
  RecordBuffer<JOB_INFO_2W> buffer(needed);
  if (!buffer || !GetJobW(handleOf(printer), jobId, recordLevel, buffer.bytes(), needed, &needed) ||
      !buffer.records()->pDocument) {
    return std::nullopt;
  }
  return text(buffer.records()->pDocument);
}

bool Win32Spooler::setJob(PrinterHandle printer, uint32_t jobId, uint32_t command) {
  return SetJobW(handleOf(printer), jobId, 0, nullptr, command) != FALSE;
}

// The call takes a pointer to bytes that may change, and changes none.
bool Win32Spooler::writePrinter(PrinterHandle printer, std::span<const std::byte> data,
                                uint32_t& written) {
  DWORD count = written;
  const BOOL succeeded = WritePrinter(handleOf(printer), const_cast<std::byte*>(data.data()),
                                      static_cast<DWORD>(data.size()), &count);
  written = count;
  return succeeded != FALSE;
}

TokenHandle Win32Spooler::revertToPrinterSelf(FunctionAddress call) {
  return from<TokenHandle>(as<RevertToPrinterSelfCall>(call)());
}

bool Win32Spooler::impersonatePrinterClient(FunctionAddress call, TokenHandle token) {
  return as<ImpersonatePrinterClientCall>(call)(as<HANDLE>(token)) != FALSE;
}

}  // namespace umpd
