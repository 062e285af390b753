// TestPrinter: a printer that stands for as long as the object does, with a driver of empty files,
// and the spooler's jobs for it.
#pragma once

#include <windows.h>
// The header below builds on <windows.h>.
#include <winspool.h>

#include <string>

namespace umpd {

class TestPrinter {
 public:
  explicit TestPrinter(std::wstring printerName);
  TestPrinter(const TestPrinter&) = delete;
  TestPrinter& operator=(const TestPrinter&) = delete;
  ~TestPrinter();

  std::wstring name;
};

// A job that is being printed to the spooler.
class SpoolJob {
 public:
  SpoolJob(const std::wstring& printer, std::wstring documentName);
  SpoolJob(const SpoolJob&) = delete;
  SpoolJob& operator=(const SpoolJob&) = delete;
  ~SpoolJob() { ClosePrinter(printer); }

  std::wstring document;
  HANDLE printer = nullptr;
  DWORD id = 0;  // 0 if the spooler took no job
};

// Where the spooler keeps its drivers, without the folder of their version.
std::wstring spoolerDriverDirectory();

}  // namespace umpd
