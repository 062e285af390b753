// A print job from its start to its end, over the simulated machine: what it does in each mode and
// on each system, and what is left of it when something fails.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "tests/umpd/PrintingMachine.h"
#include "tests/umpd/Wide.h"
#include "umpd/JobEntries.h"
#include "umpd/UmDriver2k.h"

namespace umpd {
namespace {

using enum WindowsRelease;
using Start = JobHandle (*)(PrintingMachine&);

JobHandle byName(PrintingMachine& m) {
  return DocStart(m.records, u"Office");
}
JobHandle byHandle(PrintingMachine& m) {
  return DocStart2K(m.records, m.officeHandle, m.jobNumber, u"ignored", m.document);
}

UmDriver& recordOf(JobHandle handle) {
  return *reinterpret_cast<UmDriver*>(uintptr_t{handle});
}

// Four bytes of nothing for a null text.
uint32_t writeText(PrintingMachine& m, JobHandle job, const char* text) {
  const size_t length = text ? std::string_view(text).size() : 4;
  return DocWrite(m.records, job, text, static_cast<uint32_t>(length));
}

// What others see of a job, a stretch each.
const std::string localLock = "createMutex umdriver\n";
const std::string globalLock = "createMutex Global\\umdriver\n";
const std::string begun = "launcher startprint|Office\n";
const std::string printed = "openForWriting C:\\out\\Re port.pdf\ncloseFile\n";
const std::string deleted = "setJob 7 5\n";
const std::string announced =
    "launcher stopprint|Office|C:\\out\\Re port.pdf|Editor - Re port.doc\n";
const std::string passed = "writePrinter\nwritePrinter\n";

struct LifeCycle {
  const char* name;
  WindowsRelease release;
  Start start;
  std::u16string mode;  // a setting, or nothing
  std::string story;
};

const LifeCycle lifeCycles[] = {
    {"launcher_on_windows_7", windows7, byHandle, u"",
     globalLock + begun + printed + deleted + announced},
    {"launcher_on_nt_4", nt4, byName, u"",
     localLock + "openForWriting C:\\windows\\system32\\tqpcfg.1\ncloseFile\n" + begun + printed +
         deleted + announced},
    {"launcher_on_windows_98", windows98, byName, u"", localLock + begun + printed + announced},
    {"event_on_windows_2000", windows2000, byHandle, u"FinishPrintEv",
     globalLock + printed + deleted + "openEvent Local\\FinishPrintEv\n"},
    {"event_on_windows_98", windows98, byName, u"FinishPrintEv",
     localLock + printed + "openEvent FinishPrintEv\n"},
    {"passthru_by_handle", windows7, byHandle, u"passthru", globalLock + passed},
    {"passthru_by_name", windows98, byName, u"passthru", localLock + passed},
};

class JobLifeCycle : public testing::TestWithParam<LifeCycle> {};

TEST_P(JobLifeCycle, IsSeenFromOutside) {
  const LifeCycle& row = GetParam();
  PrintingMachine m(row.release);
  m.startLauncher();
  if (!row.mode.empty()) {
    m.set(row.mode, u"1");
  }
  SimulatedObject& finished =
      m.machine.objects.holdElsewhere(SimulatedObject::Kind::event, u"FinishPrintEv");
  for (const char* operation : {"openForWriting", "closeFile", "writePrinter"}) {
    m.journal.before(operation, [&] { EXPECT_EQ(m.lock()->depth, 1u); });
  }

  const JobHandle job = row.start(m);
  ASSERT_NE(job, 0u);
  EXPECT_EQ(writeText(m, job, "%!PS\n"), 1u);
  EXPECT_EQ(writeText(m, job, "showpage"), 1u);
  const bool passthru = row.mode == u"passthru";
  EXPECT_EQ(recordOf(job).bytesWritten, passthru ? 8u : 13u);
  EXPECT_EQ(narrow(recordOf(job).docName),
            passthru && row.start == byName ? "" : narrow(m.document));
  EXPECT_TRUE(m.lockIsFree());
  EXPECT_EQ(DocEnd(m.records, job), 1u);

  EXPECT_EQ(m.story(), row.story);
  EXPECT_EQ(m.boxes(), "");
  EXPECT_EQ(m.leaks(), 0u);
  EXPECT_EQ(m.machine.objects.hangs, 0u);
  EXPECT_EQ(m.machine.files.content(m.file).value_or("none"), passthru ? "none" : "%!PS\nshowpage");
  EXPECT_EQ(m.office.received.size(), passthru ? 13u : 0u);
  EXPECT_EQ(m.stored(u"printerData4"), row.release == windows98 ? "1" : "(none)");
  const bool byEvent = row.mode == u"FinishPrintEv";
  EXPECT_EQ(finished.signalled, byEvent);
  EXPECT_EQ(m.stored(u"lastfile"), byEvent ? narrow(m.file) : "(none)");
  EXPECT_EQ(m.stored(u"DocName"), byEvent ? "Editor - Re port.doc" : "(none)");
}

INSTANTIATE_TEST_SUITE_P(All, JobLifeCycle, testing::ValuesIn(lifeCycles),
                         [](const auto& row) { return row.param.name; });

// What stands in each way of a job, and what its user is told. The job ends well all the same.
enum Reach { nothing, aJob, aFile, aWholeFile };
struct Failure {
  const char* name;
  WindowsRelease release;
  Start start;
  Reach reach;
  const char* boxes;
  void (*arrange)(PrintingMachine&);
  const char* bytes = "%!PS";
};

const Failure failures[] = {
    {"null_name", windows7, [](auto& m) { return DocStart(m.records, nullptr); }, nothing,
     "Error|DocStart - invalid printer name (null)\n\n", [](auto&) {}},
    {"unknown_printer", windows7, [](auto& m) { return DocStart(m.records, u"Nobody"); }, nothing,
     "Error|umpd - Could not open printer [Nobody]\n", [](auto&) {}},
    {"no_name_by_name", windows7, byName, nothing,
     "Error|umpd - Could not retrieve printer info - handle [0](0x0), [Office]\n",
     [](auto& m) { m.journal.before("printerSize", [&m] { m.office.name.reset(); }); }},
    {"empty_name_by_handle", windows7, byHandle, nothing,
     "Error|umpd - Could not retrieve printer info\n", [](auto& m) { m.office.name = u""; }},
    {"no_low_memory", windows7, byHandle, nothing, "",
     [](auto& m) { m.journal.failAlways("allocateLow"); }},
    {"no_launcher_on_nt_4", nt4, byHandle, aJob,
     "Error:tqpmsnd.exe is not running.  Please run it before printing to Quillpress.|"
     "File not found.\r\n\n",
     [](auto& m) { m.stopLauncher(); }},
    {"no_launcher", windows7, byHandle, aJob,
     "Error:tqpmsnd.exe is not running - and attempt to start it failed.|File not found.\r\n\n",
     [](auto& m) {
       m.set(u"showPrintStatusWin", u"0");
       m.stopLauncher();
     }},
    {"no_file_name", windows7, byHandle, aJob, "setOutputFilename failed|File not found.\r\n\n",
     [](auto& m) {
       m.set(u"SaveFilenameAction", u"1");
       m.set(u"DefaultSaveFilename", u"taken");
       m.machine.files.addFile(u"C:\\out\\taken", "");
     }},
    {"no_file", windows7, byHandle, aJob, "",
     [](auto& m) { m.journal.failAlways("openForWriting"); }},
    {"full_disk", windows7, byHandle, aFile, "", [](auto& m) { m.machine.files.roomLeft = 2; }},
    {"no_length", windows7, byHandle, aFile, "", [](auto&) {}, ""},
    {"no_bytes", windows7, byHandle, aFile, "", [](auto&) {}, nullptr},
    {"no_driver_file_on_nt_4", nt4, byName, aWholeFile,
     "copyNameValuesToPrinterDriverConfigFile failed|Error string not found\n",
     [](auto& m) { m.machine.files.systemDirectoryPath = u"C:\\nowhere"; }},
    {"printer_takes_less", windows7, byHandle, aJob, "",
     [](auto& m) {
       m.set(u"passthru", u"1");
       m.machine.spooler.writeLimit = 2;
     }},
    {"no_bytes_for_the_printer", windows7, byHandle, aJob, "",
     [](auto& m) { m.set(u"passthru", u"1"); }, nullptr},
};

class JobFailure : public testing::TestWithParam<Failure> {};

TEST_P(JobFailure, IsReportedOnceAndLeavesNothing) {
  const Failure& row = GetParam();
  PrintingMachine m(row.release);
  m.startLauncher();
  row.arrange(m);
  const JobHandle job = row.start(m);
  const bool writes = row.reach == aWholeFile;
  EXPECT_EQ(job != 0, row.reach != nothing);
  EXPECT_TRUE(m.lockIsFree());
  if (job != 0) {
    EXPECT_EQ(writeText(m, job, row.bytes), writes ? 1u : 0u);
    EXPECT_EQ(recordOf(job).status, writes ? 1u : 9u);
    EXPECT_TRUE(m.lockIsFree());
    const size_t calls = m.journal.calls().size();
    EXPECT_EQ(writeText(m, job, "more"), writes ? 1u : 0u);
    EXPECT_EQ(m.journal.calls().size() > calls, writes);
    EXPECT_EQ(DocEnd(m.records, job), 1u);
  }
  EXPECT_EQ(m.boxes(), row.boxes);
  EXPECT_EQ(m.leaks(), 0u);
  EXPECT_EQ(m.machine.files.content(m.file).has_value(), row.reach >= aFile);
}

INSTANTIATE_TEST_SUITE_P(All, JobFailure, testing::ValuesIn(failures),
                         [](const auto& row) { return row.param.name; });

// Fails the n-th call of the platform, for each n that there is. The caller gets true answers.
void failEachCall(WindowsRelease release, Start start, const char16_t* mode) {
  std::string failed;
  for (size_t n = 1; n == 1 || !failed.empty(); ++n) {
    SCOPED_TRACE(n);
    PrintingMachine m(release);
    if (release == nt4) {
      m.startLauncher();
    }
    m.machine.processes.program = [&](const ProcessRequest&) { m.startLauncher(); };
    if (*mode) {
      m.set(mode, u"1");
    }
    m.journal.failCall(n);
    const JobHandle job = start(m);
    if (job != 0) {
      const UmDriver& record = recordOf(job);
      const bool wrote = writeText(m, job, "%!PS") == 1;
      ASSERT_TRUE(m.lockIsFree());
      ASSERT_EQ(record.status, wrote ? 1u : 9u);
      if (wrote) {
        const auto content = m.machine.files.content(record.outputPath);
        ASSERT_EQ(record.passthru ? m.office.received.size() : content.value_or("").size(), 4u);
      }
      ASSERT_EQ(DocEnd(m.records, job), 1u);
    }
    ASSERT_TRUE(m.lockIsFree());
    ASSERT_EQ(m.leaks(), 0u);
    ASSERT_EQ(m.machine.objects.hangs, 0u);
    failed = m.journal.pickedOperation();
    ASSERT_TRUE(!failed.empty() || (job != 0 && m.boxes().empty()));
  }
}

TEST(JobUnderFailures, LeavesNothingBehindWhereverItFails) {
  for (const WindowsRelease release : {windows98, nt4, windows2000, windows7}) {
    for (const Start start : {byName, byHandle}) {
      for (const char16_t* mode : {u"", u"FinishPrintEv", u"passthru"}) {
        failEachCall(release, start, mode);
      }
    }
  }
}

// On its way out it gives back the lock, the client's rights and the record.
TEST(JobUnderFailures, WantOfMemoryEndsNoMoreThanItsCall) {
  for (const char* operation : {"createMutex", "systemDirectory", "createEvent", "setJob"}) {
    SCOPED_TRACE(operation);
    PrintingMachine m(nt4);
    m.startLauncher();
    m.journal.before(operation, [] { throw std::bad_alloc(); });
    try {
      const JobHandle job = byName(m);
      const uint32_t wrote = writeText(m, job, "x");
      EXPECT_EQ(recordOf(job).status, wrote ? 1u : 9u);
      DocEnd(m.records, job);
    } catch (const std::bad_alloc&) {
    }
    EXPECT_TRUE(m.lockIsFree());
    EXPECT_TRUE(m.machine.spooler.impersonating);
    EXPECT_EQ(m.leaks(), 0u);
  }
}

class JobTest : public testing::Test {
 protected:
  JobTest() { m_.startLauncher(); }
  PrintingMachine m_{windows7};
};

TEST_F(JobTest, OnlyLiveRecordsAreHandles) {
  const JobHandle job = byHandle(m_);
  for (const JobHandle wild : {0u, 1u, job + 1, job - 0x10000, 0xFFFFFFFFu}) {
    EXPECT_EQ(writeText(m_, wild, "x"), 0u);
    EXPECT_EQ(DocEnd(m_.records, wild), 0u);
  }
  EXPECT_EQ(m_.machine.messages.boxes.size(), 10u);
  EXPECT_EQ(DocEnd(m_.records, job), 1u);
  m_.machine.messages.boxes.clear();
  EXPECT_EQ(DocEnd(m_.records, job), 0u);
  EXPECT_EQ(writeText(m_, job, "x"), 0u);
  EXPECT_EQ(m_.boxes(), "Error|DocEnd invalid parms\nError|DocWrite invalid parms\n");
}

// As if another thread ended it.
TEST_F(JobTest, ARecordInUseOutlivesItsEnd) {
  const JobHandle job = byHandle(m_);
  m_.journal.before("writeFile", [&] { EXPECT_EQ(DocEnd(m_.records, job), 1u); });
  EXPECT_EQ(writeText(m_, job, "x"), 0u);
  EXPECT_EQ(m_.leaks(), 0u);
}

// As of other threads, while the end waits for the jobs' lock and while it works.
TEST_F(JobTest, WhileItEndsItsSettingsCanBeReadAndNoMore) {
  m_.set(u"imageDPI", u"600");
  const JobHandle job = byHandle(m_);
  writeText(m_, job, "x");
  int looks = 0;
  const auto look = [&] {
    ++looks;
    char16_t title[2000] = {};
    EXPECT_EQ(getIntVal(m_.records, &recordOf(job), u"imageDPI", 5), 600u);
    EXPECT_EQ(getStringVal(m_.records, &recordOf(job), u"pdfaXML", title, 2000, nullptr), 1u);
    EXPECT_NE(narrow(title).find("Re%20port.doc<"), std::string::npos);
    EXPECT_EQ(m_.boxes(), "");
    EXPECT_EQ(DocEnd(m_.records, job), 0u);
    EXPECT_EQ(writeText(m_, job, "y"), 0u);
    EXPECT_EQ(m_.boxes(), "Error|DocEnd invalid parms\nError|DocWrite invalid parms\n");
    m_.machine.messages.boxes.clear();
  };
  m_.journal.before("wait", [&] {
    m_.journal.before("wait", [] {});
    m_.stopLauncher();
    look();
  });
  m_.journal.before("setJob", look);
  EXPECT_EQ(DocEnd(m_.records, job), 1u);
  EXPECT_EQ(looks, 2);
  EXPECT_EQ(m_.machine.files.content(m_.file), "x");
  EXPECT_EQ(getIntVal(m_.records, &recordOf(job), u"imageDPI", 5), 5u);
  EXPECT_EQ(m_.leaks(), 0u);
}

// Whatever ends it, its lock is free for the next one.
TEST_F(JobTest, ATitleThatNamesADeviceIsPrinted) {
  const JobHandle job = DocStart2K(m_.records, m_.officeHandle, m_.jobNumber, nullptr, u"NUL.doc");
  EXPECT_EQ(writeText(m_, job, "x"), 1u);
  EXPECT_TRUE(m_.lockIsFree());
  EXPECT_EQ(DocEnd(m_.records, job), 1u);
  EXPECT_EQ(m_.machine.files.content(u"C:\\out\\_NUL.pdf"), "x");
}

TEST(Job, IsAnnouncedWithoutItsFileToo) {
  for (const bool inTrouble : {false, true}) {
    PrintingMachine m(windows7);
    m.startLauncher();
    m.journal.failAlways("openForWriting", !inTrouble);
    const JobHandle job = byHandle(m);
    writeText(m, job, "x");
    m.office.jobs[0].status = inTrouble;
    m.journal.clear();
    DocEnd(m.records, job);
    const std::string removed = inTrouble ? "removeFile C:\\out\\Re port.pdf\n" : "";
    EXPECT_EQ(m.story(), "closeFile\n" + removed + deleted + announced);
    EXPECT_FALSE(m.machine.files.content(m.file));
  }
}

TEST_F(JobTest, TheLauncherIsStartedUntilItRuns) {
  m_.stopLauncher();
  m_.set(u"showPrintStatusWin", u"0");
  const std::vector<ProcessRequest>& started = m_.machine.processes.started;
  m_.machine.processes.program = [&](const ProcessRequest&) {
    if (started.size() == 10) {
      m_.startLauncher();
    }
  };
  const JobHandle job = byHandle(m_);
  EXPECT_EQ(writeText(m_, job, "x"), 1u);
  EXPECT_EQ(started.size(), 10u);
  EXPECT_TRUE(started[0].commandLine.ends_with(u"\\drivers\\x64\\3\\tqpmsnd.exe"));
  EXPECT_EQ(started[0].showState, 0u);
  EXPECT_EQ(m_.journal.count("sleep"), 10u);
  EXPECT_EQ(m_.journal.last("sleep"), u"540");
  // One that has gone meanwhile is not missed.
  m_.stopLauncher();
  EXPECT_EQ(DocEnd(m_.records, job), 1u);
  EXPECT_EQ(m_.journal.count("launcher"), 0u);
  EXPECT_EQ(m_.boxes(), "");
}

TEST_F(JobTest, ABrowserInProtectedModeWritesItsShadow) {
  m_.machine.processes.protectedMode = true;
  const std::u16string shadow =
      u"C:\\D\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\C\\D\\";
  m_.machine.files.addDirectory(shadow);
  m_.journal.before("openForWriting", [this] {
    const bool outside = m_.journal.last("openForWriting").starts_with(u"C:\\out");
    m_.journal.failAlways("openForWriting", outside);
    EXPECT_EQ(m_.machine.modules.openHandles(), outside ? 0u : 1u);
  });
  const auto pathWith = [&](const std::u16string& folder, uint32_t wrote) {
    m_.machine.files.folders[SpecialFolder::localApplicationData] = folder;
    const JobHandle job = byHandle(m_);
    EXPECT_EQ(writeText(m_, job, "x"), wrote);
    const std::u16string path = recordOf(job).outputPath;
    DocEnd(m_.records, job);
    return path;
  };
  EXPECT_EQ(narrow(pathWith(u"C:\\D", 1)), narrow(shadow + u"Re port.pdf"));
  EXPECT_EQ(pathWith(u"C:\\" + std::u16string(120, u'd'), 0).size(), 259u);
}

TEST_F(JobTest, TakesALockThatOthersMadeAndAbandoned) {
  m_.journal.failAlways("createMutex");
  const JobHandle job = byHandle(m_);
  EXPECT_EQ(m_.machine.messages.debugOutput,
            (std::vector<std::u16string>{u"CreateMutex failed ", u"Device not functioning.\r\n"}));
  SimulatedObject& lock =
      m_.machine.objects.holdElsewhere(SimulatedObject::Kind::mutex, u"Global\\umdriver");
  lock.heldElsewhere = lock.abandoned = true;
  m_.journal.before("openForWriting", [&] { EXPECT_EQ(lock.depth, 1u); });
  EXPECT_EQ(writeText(m_, job, "x"), 1u);
  DocEnd(m_.records, job);
  EXPECT_EQ(lock.depth, 0u);
  EXPECT_FALSE(lock.abandoned);
}

TEST_F(JobTest, SettingsAreReadWhileTheJobGoesOn) {
  m_.set(u"imageDPI", u"600");
  const JobHandle handle = byHandle(m_);
  const void* const job = &recordOf(handle);
  char16_t text[2000] = {};
  char bytes[2000] = {};
  const auto readAll = [&] {
    return getIntVal(m_.records, job, u"IMAGEdpi", 5) +
           getStringVal(m_.records, job, u"pdfaXML", text, std::size(text), nullptr) +
           getStringMultibyte(m_.records, job, "pdfaXML", bytes, sizeof bytes);
  };
  EXPECT_EQ(readAll(), 602u);
  EXPECT_NE(narrow(text).find("x-default'>Editor - Re%20port.doc<"), std::string::npos);
  EXPECT_EQ(narrow(text), bytes);
  EXPECT_EQ(getIntVal(m_.records, job, u"other", 5), 5u);

  DocEnd(m_.records, handle);
  EXPECT_EQ(m_.boxes(), "");
  EXPECT_EQ(readAll(), 5u);
  for (const char* call : {"getPrinterName", "getStringVal", "getStringMultibyte"}) {
    EXPECT_NE(m_.boxes().find(std::string("Error|") + call + " invalid parms\n"),
              std::string::npos);
  }
}

TEST_F(JobTest, RunsSetupAtItsStartAndSetsDoPrintBackAtItsEnd) {
  m_.machine.registry.setText(u"HKCU\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run",
                              u"tqpmsnd.exe", u"C:\\2\\tqpmsnd.exe");
  m_.set(u"DoPrint", u"1");
  const JobHandle job = byHandle(m_);
  EXPECT_TRUE(
      m_.journal.last("createProcess").ends_with(u" -printer=\"Office\" -installStartmenu"));
  recordOf(job).readDoPrint();
  DocEnd(m_.records, job);
  EXPECT_EQ(m_.stored(u"DoPrint"), "0");
}

}  // namespace
}  // namespace umpd
