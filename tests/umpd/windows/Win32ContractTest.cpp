// The contract over the real system, which lends the suite a printer, a folder and a key.
#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <thread>

#include "tests/umpd/PlatformContract.h"
#include "tests/windows/TestPrinter.h"
#include "umpd/platform/win32/Win32Platform.h"

namespace umpd {
namespace {

const wchar_t* wide(const std::u16string& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
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

class Win32ContractMachine : public ContractMachine {
 public:
  explicit Win32ContractMachine(std::unique_ptr<Win32Platform> real)
      : ContractMachine(real->platform), machine_(std::move(real)) {
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
    printer = text(installed_.name.c_str());
    port = u"LPT1:";
  }
  ~Win32ContractMachine() override {
    std::filesystem::remove_all(wide(folder));
    RegDeleteTreeW(HKEY_CURRENT_USER, wide(key));
  }

  void writeProfile(const std::u16string& path, const std::u16string& section,
                    const std::vector<std::u16string>& lines) override {
    std::string content(1, '[');
    content.append(section.begin(), section.end()).append("]\r\n");
    for (const std::u16string& line : lines) {
      content.append(line.begin(), line.end()).append("\r\n");
    }
    writeWhole(path, content);
  }

  uint32_t startJob(const std::u16string& document) override {
    job_ = std::make_unique<SpoolJob>(installed_.name, wide(document));
    return job_->id;
  }

  PrinterHandle jobsHandle() override {
    return PrinterHandle{reinterpret_cast<uintptr_t>(job_->printer)};
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

  std::unique_ptr<Win32Platform> machine_;
  TestPrinter installed_{L"Contract Printer"};
  std::unique_ptr<SpoolJob> job_;
};

std::unique_ptr<ContractMachine> makeWin32Machine() {
  return std::make_unique<Win32ContractMachine>(std::make_unique<Win32Platform>());
}

// Whoever can put a file beside the program, or into the current directory, cannot have it loaded.
TEST(Win32Modules, ComeFromTheSystemsDirectoryOnly) {
  namespace fs = std::filesystem;
  wchar_t path[MAX_PATH] = {};
  GetSystemDirectoryW(path, MAX_PATH);
  const fs::path library = fs::path(path) / L"version.dll";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const fs::path planted[] = {fs::path(path).replace_filename(L"planted.dll"),
                              fs::current_path() / L"planted.dll"};
  Win32Modules modules;
  for (const fs::path& each : planted) {
    fs::copy_file(library, each, fs::copy_options::overwrite_existing);
    const HMODULE found = LoadLibraryW(L"planted.dll");
    EXPECT_NE(found, nullptr) << "the bait is no library";
    FreeLibrary(found);
    EXPECT_FALSE(modules.load(u"planted.dll"));
    fs::remove(each);
  }
  EXPECT_TRUE(modules.load(u"version.dll"));
}

INSTANTIATE_TEST_SUITE_P(Win32, PlatformContract, testing::Values(makeWin32Machine));

}  // namespace
}  // namespace umpd
