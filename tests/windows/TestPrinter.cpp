#include "tests/windows/TestPrinter.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <utility>

namespace umpd {
namespace {

std::wstring driverName = L"Tarnwick Quillpress";

// Nobody is going to render with it.
void installDriver() {
  const std::filesystem::path path = spoolerDriverDirectory() + L"\\quillpress-test.dll";
  std::ofstream(path).close();
  std::wstring file = path.wstring();
  DRIVER_INFO_3W driver{};
  driver.cVersion = 3;
  driver.pName = driverName.data();
  driver.pDriverPath = driver.pDataFile = driver.pConfigFile = file.data();
  AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&driver), APD_COPY_ALL_FILES);
}

}  // namespace

std::wstring spoolerDriverDirectory() {
  wchar_t directory[MAX_PATH] = {};
  DWORD needed = 0;
  GetPrinterDriverDirectoryW(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(directory),
                             sizeof directory, &needed);
  return directory;
}

TestPrinter::TestPrinter(std::wstring printerName) : name(std::move(printerName)) {
  static const bool installed = (installDriver(), true);
  static_cast<void>(installed);
  wchar_t port[] = L"LPT1:";
  wchar_t processor[] = L"winprint";
  wchar_t datatype[] = L"RAW";
  PRINTER_INFO_2W info{};
  info.pPrinterName = name.data();
  info.pPortName = port;
  info.pDriverName = driverName.data();
  info.pPrintProcessor = processor;
  info.pDatatype = datatype;
  const HANDLE handle = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&info));
  EXPECT_NE(handle, nullptr) << "no printer: error " << GetLastError();
  if (handle) {
    ClosePrinter(handle);
  }
}

TestPrinter::~TestPrinter() {
  HANDLE handle = nullptr;
  PRINTER_DEFAULTSW all{nullptr, nullptr, PRINTER_ALL_ACCESS};
  if (!OpenPrinterW(name.data(), &handle, &all)) {
    return;
  }
  DeletePrinter(handle);
  ClosePrinter(handle);
}

SpoolJob::SpoolJob(const std::wstring& printerName, std::wstring documentName)
    : document(std::move(documentName)) {
  std::wstring name = printerName;
  wchar_t datatype[] = L"RAW";
  DOC_INFO_1W info{document.data(), nullptr, datatype};
  OpenPrinterW(name.data(), &printer, nullptr);
  id = StartDocPrinterW(printer, 1, reinterpret_cast<BYTE*>(&info));
}

}  // namespace umpd
