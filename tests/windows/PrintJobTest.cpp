// Whole print jobs through the library's exports, as a driver makes them: with the system's own
// registry, spooler, files and named objects, and with a launcher that is another process.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include "include/tqpumpd2k.h"
#include "tests/windows/ProcessUse.h"
#include "tests/windows/Receiver.h"
#include "tests/windows/TestLauncher.h"
#include "tests/windows/TestPrinter.h"

namespace umpd {
namespace {

namespace fs = std::filesystem;

constexpr wchar_t printerName[] = L"Jobs Printer";
constexpr wchar_t settingsKey[] = L"Software\\Quillpress\\Jobs Printer";

fs::path ownProgram() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return path;
}

std::string contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

const void* widened(uint32_t job) {
  return reinterpret_cast<const void*>(uintptr_t{job});
}

uint32_t write(uint32_t job, const std::string& text) {
  return DocWrite(job, text.data(), static_cast<uint32_t>(text.size()));
}

// A whole job of two buffers. False if a call failed.
bool print(const std::string& text, const wchar_t* document = L"Editor - Re%20port.doc") {
  const SpoolJob spooled(printerName, document);
  const uint32_t job = DocStart2K(spooled.printer, spooled.id, printerName, document);
  const bool written = write(job, text) == 1 && write(job, text) == 1;
  return DocEnd(job) == 1 && written;
}

class PrintJob : public testing::Test {
 protected:
  PrintJob() {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    RegDeleteTreeW(HKEY_CURRENT_USER, settingsKey);
    set(L"DefaultSaveDir", folder_.wstring());
    fs::create_directories(launcher_.parent_path());
    fs::copy_file(ownProgram().replace_filename(L"test_launcher.exe"), launcher_,
                  fs::copy_options::overwrite_existing);
  }
  ~PrintJob() override {
    stopLauncher();
    fs::remove_all(folder_);
    RegDeleteTreeW(HKEY_CURRENT_USER, settingsKey);
  }

  static void set(const wchar_t* name, const std::wstring& text) {
    RegSetKeyValueW(HKEY_CURRENT_USER, settingsKey, name, REG_SZ, text.c_str(),
                    static_cast<DWORD>(2 * text.size() + 2));
  }
  static void set(const wchar_t* name, DWORD number) {
    RegSetKeyValueW(HKEY_CURRENT_USER, settingsKey, name, REG_DWORD, &number, sizeof number);
  }
  static std::wstring stored(const wchar_t* name) {
    wchar_t text[1000] = {};
    DWORD size = sizeof text;
    RegGetValueW(HKEY_CURRENT_USER, settingsKey, name, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
  }

  // Gives what the launcher was told.
  std::string stopLauncher() {
    const HANDLE quit = OpenEventW(EVENT_MODIFY_STATE, FALSE, launcherQuitEvent);
    SetEvent(quit);
    CloseHandle(quit);
    fs::path log = launcher_;
    log.replace_extension(L".log");
    const std::string told = contentOf(log);
    // A program that runs cannot be removed.
    std::error_code error;
    while (fs::exists(launcher_) && !fs::remove(launcher_, error)) {
      Sleep(20);
    }
    fs::remove(log);
    return told;
  }
  size_t files() const {
    return static_cast<size_t>(
        std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }

  // Another process that prints jobs, each of its own letter.
  static HANDLE startPrinting(wchar_t letter) {
    SetEnvironmentVariableW(L"QUILLPRESS_LETTER", std::wstring(1, letter).c_str());
    std::wstring command = L"\"" + ownProgram().wstring() +
                           L"\" --gtest_filter=OtherProcess.* --gtest_also_run_disabled_tests";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;  // none: what it says is for nobody
    PROCESS_INFORMATION started{};
    CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                   &started);
    CloseHandle(started.hThread);
    return started.hProcess;
  }

  const TestPrinter printer_{printerName};
  const fs::path folder_ = fs::temp_directory_path() / L"quillpress-jobs";
  const fs::path file_ = folder_ / L"Re port.pdf";
  const fs::path launcher_ = fs::path(spoolerDriverDirectory()) / L"3" / L"tqpmsnd.exe";
};

constexpr int jobsOfOtherProcess = 5;

TEST(OtherProcess, DISABLED_Prints) {
  wchar_t letter[2] = {};
  GetEnvironmentVariableW(L"QUILLPRESS_LETTER", letter, 2);
  const std::string text(5000, static_cast<char>(letter[0]));
  for (int i = 0; i < jobsOfOtherProcess; ++i) {
    EXPECT_TRUE(print(text));
  }
}

TEST_F(PrintJob, IsWrittenAndTheLauncherIsStartedAndTold) {
  ASSERT_FALSE(fs::exists(file_));
  ASSERT_TRUE(print("%!PS\n"));
  EXPECT_EQ(contentOf(file_), "%!PS\n%!PS\n");
  const std::string path = file_.string();
  EXPECT_EQ(stopLauncher(),
            "startprint|Jobs Printer\nstopprint|Jobs Printer|" + path + "|Editor - Re port.doc\n");
}

TEST_F(PrintJob, StartsByThePrintersName) {
  const HMODULE library = GetModuleHandleW(L"tqpumpd2k.dll");
  const auto start = reinterpret_cast<DocStartCall>(
      reinterpret_cast<void*>(GetProcAddress(library, TQP_DOC_START)));
  ASSERT_NE(start, nullptr);
  std::wstring name = printerName;
  const auto job = static_cast<uint32_t>(start(name.data()));
  ASSERT_NE(job, 0u);
  EXPECT_EQ(write(job, "abc"), 1u);
  EXPECT_EQ(DocEnd(job), 1u);
  EXPECT_EQ(files(), 1u);
  EXPECT_EQ(start(nullptr), 0u);
  name = L"No such printer";
  EXPECT_EQ(start(name.data()), 0u);

  using Assign = char*(char*, const char*);
  const auto assign = reinterpret_cast<Assign*>(
      reinterpret_cast<void*>(GetProcAddress(library, "??4CUmpd@@QEAAAEAV0@AEBV0@@Z")));
  ASSERT_NE(assign, nullptr);
  char objects[] = "ab";
  EXPECT_EQ(assign(objects, objects + 1), objects);
  EXPECT_STREQ(objects, "ab");
  EXPECT_NE(FindResourceW(library, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(16)), nullptr)
      << "the version";
}

TEST_F(PrintJob, TellsItsSettings) {
  set(L"number", 4711);
  set(L"text", L"a text");
  set(L"DocInfoEnable", 1);
  set(L"DocInfoTitle", L"Caf\u00e9 & <Bar>");
  const SpoolJob spooled(printerName, L"Page");
  const uint32_t handle = DocStart2K(spooled.printer, spooled.id, nullptr, nullptr);
  const void* const job = widened(handle);

  EXPECT_EQ(getIntVal(job, L"NUMBER", 5), 4711u);
  EXPECT_EQ(getIntVal(job, L"nothing", 5), 5u);
  EXPECT_EQ(getIntVal(job, nullptr, 5), 5u);

  wchar_t text[4000] = L"before";
  EXPECT_EQ(getStringVal(job, L"nothing", text, 100, nullptr), 1u);
  EXPECT_STREQ(text, L"before");
  EXPECT_EQ(getStringVal(job, nullptr, text, 100, L"nameless"), 1u);
  EXPECT_STREQ(text, L"nameless");
  EXPECT_EQ(getStringVal(job, L"Text", text, 6, L"long"), 1u);
  EXPECT_STREQ(text, L"long");
  EXPECT_EQ(getStringVal(job, L"Text", text, 7, L"long"), 1u);
  EXPECT_STREQ(text, L"a text");
  EXPECT_EQ(getStringVal(job, L"Text", nullptr, 100, L"long"), 1u);

  EXPECT_EQ(getStringVal(job, L"pdfaXML", text, 4000, L"long"), 1u);
  const std::wstring packet = text;
  EXPECT_NE(packet.find(L"Caf\u00e9 &amp; &lt;Bar&gt;"), std::wstring::npos) << packet.size();
  char bytes[4000] = "before";
  EXPECT_EQ(getStringMultibyte(job, "PDFAXML", bytes, sizeof bytes), 1u);
  EXPECT_EQ(getStringMultibyte(job, nullptr, bytes, sizeof bytes), 1u);
  EXPECT_EQ(getStringMultibyte(job, "pdfaXML", nullptr, 100), 1u);
  EXPECT_STREQ(bytes, "before");
  EXPECT_EQ(getStringMultibyte(job, "pdfaXML", bytes, sizeof bytes), 1u);
  const std::string utf8 = bytes;
  EXPECT_EQ(utf8.size(), packet.size() + 1);
  EXPECT_NE(utf8.find("Caf\xc3\xa9 &amp; &lt;Bar&gt;"), std::string::npos);
  EXPECT_EQ(DocEnd(handle), 1u);
}

TEST_F(PrintJob, IsUnknownOnceEndedAsAnyOtherNumber) {
  set(L"number", 4711);
  const SpoolJob spooled(printerName, L"Page");
  const uint32_t handle = DocStart2K(spooled.printer, spooled.id, nullptr, nullptr);
  ASSERT_EQ(getIntVal(widened(handle), L"number", 6), 4711u);
  ASSERT_EQ(DocEnd(handle), 1u);
  wchar_t text[100] = L"before";
  char bytes[100] = "before";
  for (const uint32_t bad : {handle, handle + 8, 0u, 0x10001u, 0xfffffff0u}) {
    EXPECT_EQ(write(bad, "abc"), 0u) << bad;
    EXPECT_EQ(DocEnd(bad), 0u) << bad;
    EXPECT_EQ(getIntVal(widened(bad), L"number", 6), 6u) << bad;
    EXPECT_EQ(getStringVal(widened(bad), L"text", text, 100, L"default"), 0u) << bad;
    EXPECT_EQ(getStringMultibyte(widened(bad), "pdfaXML", bytes, sizeof bytes), 0u) << bad;
  }
  EXPECT_STREQ(text, L"before");
  EXPECT_STREQ(bytes, "before");
  EXPECT_EQ(files(), 0u);
}

// Such a file exists in every folder, and has no end of names: see what is printed.
TEST_F(PrintJob, MayBeNamedAfterADevice) {
  set(L"FinishPrintEv", 1);
  for (const wchar_t* title : {L"con", L"NUL.doc", L"Editor - com1 .doc"}) {
    ASSERT_TRUE(print("a", title)) << title;
  }
  EXPECT_EQ(contentOf(folder_ / L"_con.pdf"), "aa");
  EXPECT_EQ(contentOf(folder_ / L"_NUL.pdf"), "aa");
  EXPECT_EQ(contentOf(folder_ / L"_com1 .pdf"), "aa");
}

// Each thread prints jobs of its own, while another converts pages.
TEST_F(PrintJob, OfOneThreadDoesNotDisturbOthers) {
  set(L"FinishPrintEv", 1);
  constexpr int jobsOfEach = 5;
  const SpoolJob spooled(printerName, L"Page");
  const auto printAll = [&](char letter) {
    const std::string text(3000, letter);
    for (int i = 0; i < jobsOfEach; ++i) {
      const uint32_t job = DocStart2K(spooled.printer, spooled.id, nullptr, L"Page");
      EXPECT_EQ(write(job, text), 1u);
      EXPECT_EQ(getIntVal(widened(job), L"FinishPrintEv", 0), 1u);
      EXPECT_EQ(write(job, text), 1u);
      EXPECT_EQ(DocEnd(job), 1u);
    }
  };
  std::thread first(printAll, 'a');
  std::thread second(printAll, 'b');
  const float matrix[] = {1, 0, 0, 1, 0, 0};
  for (int i = 0; i < 200; ++i) {
    void* const converter = PSOpen(matrix);
    int32_t length = -1;
    EXPECT_STREQ(PSConvertToPdf(converter, "5 setlinewidth ", &length), "5 w ");
    PSClose(converter);
  }
  first.join();
  second.join();
  EXPECT_EQ(files(), size_t{2 * jobsOfEach});
  for (const auto& entry : fs::directory_iterator(folder_)) {
    const std::string content = contentOf(entry.path());
    EXPECT_EQ(content, std::string(6000, content[0])) << entry.path();
  }
}

TEST_F(PrintJob, SignalsItsEndWithoutALauncher) {
  set(L"FinishPrintEv", 1);
  const HANDLE finished = CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv");
  EXPECT_TRUE(print("a"));
  EXPECT_EQ(WaitForSingleObject(finished, 0), WAIT_OBJECT_0);
  CloseHandle(finished);
  EXPECT_EQ(stored(L"lastfile"), file_.wstring());
  EXPECT_EQ(stored(L"DocName"), L"Editor - Re port.doc");
  EXPECT_EQ(contentOf(file_), "aa");
  EXPECT_EQ(stopLauncher(), "");
}

TEST_F(PrintJob, PassesThroughToThePrinter) {
  set(L"passthru", 1);
  EXPECT_TRUE(print("a"));
  EXPECT_EQ(files(), 0u);
  EXPECT_EQ(stopLauncher(), "");
}

TEST_F(PrintJob, FailsWithoutALauncherThatStarts) {
  fs::remove(launcher_);
  const SpoolJob spooled(printerName, L"Page");
  const uint32_t job = DocStart2K(spooled.printer, spooled.id, nullptr, nullptr);
  EXPECT_EQ(write(job, "a"), 0u);
  EXPECT_EQ(write(job, "a"), 0u);
  EXPECT_EQ(DocEnd(job), 1u);
  EXPECT_EQ(files(), 0u);
}

TEST_F(PrintJob, SharesTheMachineWithOtherProcesses) {
  const HANDLE others[] = {startPrinting(L'a'), startPrinting(L'b')};
  EXPECT_EQ(WaitForMultipleObjects(2, others, TRUE, 120'000), WAIT_OBJECT_0);
  for (const HANDLE process : others) {
    DWORD status = 1;
    GetExitCodeProcess(process, &status);
    EXPECT_EQ(status, 0u);
    CloseHandle(process);
  }
  size_t ofA = 0;
  for (const auto& entry : fs::directory_iterator(folder_)) {
    const std::string content = contentOf(entry.path());
    ofA += content == std::string(10'000, 'a');
    EXPECT_TRUE(content == std::string(10'000, 'a') || content == std::string(10'000, 'b'));
  }
  EXPECT_EQ(ofA, size_t{jobsOfOtherProcess});
  EXPECT_EQ(files(), size_t{2 * jobsOfOtherProcess});
  EXPECT_EQ(std::ranges::count(stopLauncher(), '\n'), 4 * jobsOfOtherProcess);
}

TEST_F(PrintJob, GoesOnAfterAProcessThatDiedWithTheLock) {
  Receiver receiver;
  const HANDLE other = startPrinting(L'a');
  EXPECT_EQ(receiver.receive(60'000, other), "startprint|Jobs Printer");
  // It waits for the answer now, and holds the lock.
  TerminateProcess(other, 1);
  WaitForSingleObject(other, INFINITE);
  CloseHandle(other);

  const HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  std::thread answers([&] {
    while (receiver.receive(60'000, done)) {
      receiver.answer();
    }
  });
  EXPECT_TRUE(print("b"));
  SetEvent(done);
  answers.join();
  CloseHandle(done);
  EXPECT_EQ(contentOf(file_), "bb");
}

TEST_F(PrintJob, LeavesNothingBehindIn200Jobs) {
  const auto printed = [&] { return print("%!PS\n") && fs::remove(file_); };
  for (int i = 0; i < 5; ++i) {
    ASSERT_TRUE(printed());
  }
  const size_t handles = nextHandleNumber();
  const size_t blocks = heapBlocks();
  const size_t regions = lowRegions();
  for (int i = 0; i < 200; ++i) {
    ASSERT_TRUE(printed()) << i;
  }
  // The system may keep some of its own.
  EXPECT_LE(nextHandleNumber(), handles + 10);
  EXPECT_LE(heapBlocks(), blocks + 10);
  EXPECT_LE(lowRegions(), regions + 10);
}

TEST(ConverterThreads, GiveTheirMemoryBackWhenTheyEnd) {
  const auto convertInThread = [] {
    const HANDLE thread = CreateThread(
        nullptr, 0,
        [](void*) -> DWORD {
          const float identity[] = {1, 0, 0, 1, 0, 0};
          const std::string page = "[/a (a string that is kept in memory of its own) 1] pop";
          void* converter = PSOpen(identity);
          auto length = static_cast<int32_t>(page.size());
          EXPECT_NE(PSConvertToPdf(converter, page.data(), &length), nullptr);
          PSClose(converter);
          return 0;
        },
        nullptr, 0, nullptr);
    EXPECT_EQ(WaitForSingleObject(thread, 60'000), WAIT_OBJECT_0);
    CloseHandle(thread);
  };
  for (int i = 0; i < 3; ++i) {
    convertInThread();
  }
  const size_t blocks = heapBlocks();
  for (int i = 0; i < 20; ++i) {
    convertInThread();
  }
  EXPECT_LE(heapBlocks(), blocks + 10);
}

// A process that unloads the library in the midst of a job goes on.
TEST_F(PrintJob, IsGivenUpWithTheLibrary) {
  const fs::path copy = folder_ / L"copy.dll";
  wchar_t original[MAX_PATH] = {};
  GetModuleFileNameW(GetModuleHandleW(L"tqpumpd2k.dll"), original, MAX_PATH);
  fs::copy_file(original, copy);
  const HMODULE library = LoadLibraryW(copy.c_str());
  ASSERT_NE(library, nullptr);
  const auto start = reinterpret_cast<decltype(&DocStart2K)>(
      reinterpret_cast<void*>(GetProcAddress(library, "DocStart2K")));
  const SpoolJob spooled(printerName, L"Page");
  EXPECT_NE(start(spooled.printer, spooled.id, nullptr, nullptr), 0u);
  EXPECT_TRUE(FreeLibrary(library));
  EXPECT_EQ(GetModuleHandleW(L"copy.dll"), nullptr);
}

}  // namespace
}  // namespace umpd
