// The contract over the real system, which lends the suite a printer, a folder and a key.
#include <windows.h>
// The headers below build on <windows.h>.
#include <winspool.h>

#include <filesystem>
#include <thread>

#include "tests/umpd/PlatformContract.h"
#include "umpd/platform/win32/Win32Platform.h"

namespace {

const wchar_t* wide(const std::u16string& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

wchar_t* writable(std::u16string& text) {
  return reinterpret_cast<wchar_t*>(text.data());
}

bool isWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

std::u16string text(const wchar_t* from) {
  return {from, from + std::char_traits<wchar_t>::length(from)};
}

void writeWhole(const std::u16string& path, const std::string& content) {
  const HANDLE file = CreateFileW(wide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  DWORD written = 0;
  WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
  CloseHandle(file);
}

std::u16string driverName = u"Tarnwick Quillpress";

// Of empty files: nobody is going to render with it.
void installDriver() {
  wchar_t directory[MAX_PATH] = {};
  DWORD needed = 0;
  GetPrinterDriverDirectoryW(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(directory),
                             sizeof directory, &needed);
  std::u16string file = text(directory) + u"\\quillpress-contract.dll";
  writeWhole(file, "");
  DRIVER_INFO_3W driver{};
  driver.cVersion = 3;
  driver.pName = writable(driverName);
  driver.pDriverPath = driver.pDataFile = driver.pConfigFile = writable(file);
  AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&driver), APD_COPY_ALL_FILES);
}

class Win32ContractMachine : public ContractMachine {
 public:
  explicit Win32ContractMachine(std::unique_ptr<Win32Platform> real)
      : ContractMachine(real->platform), real_(std::move(real)) {
    wchar_t temporary[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temporary);
    folder = text(temporary) + u"quillpress-contract-" + text(std::to_wstring(serial()).c_str());
    // Left over from a run that did not end.
    std::filesystem::remove_all(wide(folder));
    CreateDirectoryW(wide(folder), nullptr);
    key = u"Software\\Quillpress Contract";
    RegDeleteTreeW(HKEY_CURRENT_USER, wide(key));
    program = u"cmd.exe /c exit 3";
    answersForJobs = knowsProtectedMode = !isWine();
    installPrinter();
  }
  ~Win32ContractMachine() override {
    if (job_) ClosePrinter(job_);
    std::filesystem::remove_all(wide(folder));
    RegDeleteTreeW(HKEY_CURRENT_USER, wide(key));
    HANDLE handle = nullptr;
    PRINTER_DEFAULTSW all{nullptr, nullptr, PRINTER_ALL_ACCESS};
    if (!OpenPrinterW(writable(printer), &handle, &all)) return;
    DeletePrinter(handle);
    ClosePrinter(handle);
  }

  void writeProfile(const std::u16string& path, const std::u16string& section,
                    const std::vector<std::u16string>& lines) override {
    std::string content(1, '[');
    content.append(section.begin(), section.end()).append("]\r\n");
    for (const std::u16string& line : lines)
      content.append(line.begin(), line.end()).append("\r\n");
    writeWhole(path, content);
  }

  std::uint32_t startJob(const std::u16string& document) override {
    std::u16string name = document;
    wchar_t datatype[] = L"RAW";
    DOC_INFO_1W info{writable(name), nullptr, datatype};
    OpenPrinterW(writable(printer), &job_, nullptr);
    return StartDocPrinterW(job_, 1, reinterpret_cast<BYTE*>(&info));
  }

  void abandonMutex(const std::u16string& name) override {
    std::thread([&] {
      WaitForSingleObject(OpenMutexW(SYNCHRONIZE, FALSE, wide(name)), INFINITE);
    }).join();
  }

 private:
  static DWORD serial() {
    static DWORD next = GetCurrentProcessId() * 1000;
    return next++;
  }

  void installPrinter() {
    static const bool installed = (installDriver(), true);
    static_cast<void>(installed);
    printer = u"Contract Printer";
    port = u"LPT1:";
    std::u16string processor = u"winprint";
    std::u16string datatype = u"RAW";
    PRINTER_INFO_2W info{};
    info.pPrinterName = writable(printer);
    info.pPortName = writable(port);
    info.pDriverName = writable(driverName);
    info.pPrintProcessor = writable(processor);
    info.pDatatype = writable(datatype);
    const HANDLE handle = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&info));
    EXPECT_NE(handle, nullptr) << "no printer: error " << GetLastError();
    if (handle) ClosePrinter(handle);
  }

  std::unique_ptr<Win32Platform> real_;
  HANDLE job_ = nullptr;
};

std::unique_ptr<ContractMachine> makeWin32Machine() {
  return std::make_unique<Win32ContractMachine>(std::make_unique<Win32Platform>());
}

INSTANTIATE_TEST_SUITE_P(Win32, PlatformContract, testing::Values(makeWin32Machine));

}  // namespace
