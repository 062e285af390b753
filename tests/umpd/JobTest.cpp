// A print job from its start to its end, over the simulated machine: what it does in each mode and
// on each system, and what is left of it when something fails.
#include <gtest/gtest.h>

#include "tests/umpd/PrintingMachine.h"
#include "tests/umpd/Wide.h"
#include "umpd/DrvSpl.h"
#include "umpd/JobEntries.h"
#include "umpd/UmDriver2k.h"

namespace {

constexpr auto windows98 = WindowsRelease::windows98;
constexpr auto nt4 = WindowsRelease::nt4;
constexpr auto windows2000 = WindowsRelease::windows2000;
constexpr auto windows7 = WindowsRelease::windows7;

using Start = JobHandle (*)(PrintingMachine&);

JobHandle byName(PrintingMachine& m) {
  return DocStart(m.records, u"Office");
}
JobHandle byHandle(PrintingMachine& m) {
  return DocStart2K(m.records, m.officeHandle, m.jobNumber, u"ignored", m.document);
}

UmDriver& recordOf(JobHandle handle) {
  return *reinterpret_cast<UmDriver*>(std::uintptr_t{handle});
}

std::uint32_t writeText(PrintingMachine& m, JobHandle job, std::string_view text) {
  return DocWrite(m.records, job, text.data(), static_cast<std::uint32_t>(text.size()));
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
    {"launcher_by_name", windows7, byName, u"", globalLock + begun + printed + deleted + announced},
    {"launcher_on_nt_4", nt4, byName, u"",
     localLock + "openForWriting C:\\windows\\system32\\tqpcfg.1\ncloseFile\n" + begun + printed +
         deleted + announced},
    {"launcher_on_windows_98", windows98, byName, u"", localLock + begun + printed + announced},
    {"event_on_windows_2000", windows2000, byHandle, u"FinishPrintEv",
     globalLock + printed + deleted + "openEvent Local\\FinishPrintEv\n"},
    {"event_on_nt_4", nt4, byHandle, u"FinishPrintEv",
     localLock + printed + deleted + "openEvent FinishPrintEv\n"},
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
  if (!row.mode.empty()) m.set(row.mode, u"1");
  SimulatedObject& finished =
      m.machine.objects.holdElsewhere(SimulatedObject::Kind::event, u"FinishPrintEv");
  for (const char* operation : {"openForWriting", "closeFile", "writePrinter"})
    m.journal.before(operation, [&] { EXPECT_EQ(m.lock()->depth, 1u); });

  const JobHandle job = row.start(m);
  ASSERT_NE(job, 0u);
  EXPECT_EQ(recordOf(job).status, statusInitialised);
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
};

const Failure failures[] = {
    {"null_name", windows7, [](auto& m) { return DocStart(m.records, nullptr); }, nothing,
     "Error|DocStart - invalid printer name (null)\n\n", [](auto&) {}},
    {"unknown_printer", windows7, [](auto& m) { return DocStart(m.records, u"Nobody"); }, nothing,
     "Error|umpd - Could not open printer [Nobody]\n", [](auto&) {}},
    {"no_information_by_name", windows7, byName, nothing,
     "Error|umpd - Could not retrieve printer info - handle [0](0x0), [Office]\n",
     [](auto& m) { m.journal.failAlways("printer"); }},
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
    {"no_driver_file_on_nt_4", nt4, byName, aWholeFile,
     "copyNameValuesToPrinterDriverConfigFile failed|Error string not found\n",
     [](auto& m) { m.machine.files.systemDirectoryPath = u"C:\\nowhere"; }},
    {"printer_takes_less", windows7, byHandle, aJob, "",
     [](auto& m) {
       m.set(u"passthru", u"1");
       m.machine.spooler.writeLimit = 2;
     }},
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
    EXPECT_EQ(writeText(m, job, "%!PS"), writes ? 1u : 0u);
    EXPECT_EQ(recordOf(job).status, writes ? 1u : 9u);
    EXPECT_TRUE(m.lockIsFree());
    const std::size_t calls = m.journal.calls().size();
    if (!writes) {
      EXPECT_EQ(writeText(m, job, "more"), 0u);
      EXPECT_EQ(m.journal.calls().size(), calls);
    }
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
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    ASSERT_LT(n, 1000u);
    PrintingMachine m(release);
    release == nt4 ? m.startLauncher() : m.launcherStartsOnDemand();
    if (*mode) m.set(mode, u"1");
    m.journal.failCall(n);
    const JobHandle job = start(m);
    ASSERT_TRUE(m.lockIsFree());
    if (job != 0) {
      const bool wrote = writeText(m, job, "%!PS") == 1;
      ASSERT_TRUE(m.lockIsFree());
      if (wrote) {
        const UmDriver& record = recordOf(job);
        const auto content = m.machine.files.content(record.outputPath);
        ASSERT_EQ(record.passthru ? m.office.received.size() : content.value_or("").size(), 4u);
      }
      ASSERT_EQ(recordOf(job).status, wrote ? 1u : 9u);
      ASSERT_EQ(DocEnd(m.records, job), 1u);
    }
    ASSERT_TRUE(m.lockIsFree());
    ASSERT_EQ(m.leaks(), 0u);
    ASSERT_EQ(m.machine.objects.hangs, 0u);
    if (m.journal.pickedOperation().empty()) {
      ASSERT_NE(job, 0u);
      ASSERT_EQ(m.boxes(), "");
      return;
    }
  }
}

TEST(JobUnderFailures, LeavesNothingBehindWhereverItFails) {
  for (const WindowsRelease release : {windows98, nt4, windows2000, windows7})
    for (const Start start : {byName, byHandle})
      for (const char16_t* mode : {u"", u"FinishPrintEv", u"passthru"})
        failEachCall(release, start, mode);
}

class JobTest : public testing::Test {
 protected:
  JobTest() { m.startLauncher(); }
  // The lock stands before the job comes; a job holds it where it makes its file.
  SimulatedObject& standingLock() {
    m.machine.objects.holdElsewhere(SimulatedObject::Kind::mutex, u"Global\\umdriver");
    m.journal.before("openForWriting", [this] { EXPECT_EQ(m.lock()->depth, 1u); });
    return *m.lock();
  }
  PrintingMachine m{windows7};
};

TEST_F(JobTest, OnlyLiveRecordsAreHandles) {
  const JobHandle job = byHandle(m);
  const JobHandle wild[] = {0, 1, job + 1, job - 0x10000, 0xFFFFFFFF};
  for (const JobHandle handle : wild) {
    EXPECT_EQ(writeText(m, handle, "x"), 0u);
    EXPECT_EQ(DocEnd(m.records, handle), 0u);
  }
  EXPECT_EQ(m.machine.messages.boxes.size(), 2 * std::size(wild));
  EXPECT_EQ(DocEnd(m.records, job), 1u);
  EXPECT_EQ(DocEnd(m.records, job), 0u);
  EXPECT_EQ(writeText(m, job, "x"), 0u);
  EXPECT_TRUE(m.machine.messages.boxes[10].narrow);
  EXPECT_EQ(narrow(m.machine.messages.boxes[10].text), "DocEnd invalid parms");
  EXPECT_EQ(narrow(m.machine.messages.boxes[11].text), "DocWrite invalid parms");
}

TEST_F(JobTest, NothingToWriteIsAFailureThatMakesTheFile) {
  for (const char* buffer : {static_cast<const char*>(nullptr), "text"}) {
    const JobHandle job = byHandle(m);
    EXPECT_EQ(DocWrite(m.records, job, buffer, buffer ? 0 : 4), 0u);
    EXPECT_EQ(recordOf(job).status, statusInitialised | statusFailed);
    EXPECT_EQ(m.machine.files.content(recordOf(job).outputPath), "");
    DocEnd(m.records, job);
  }
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
  m.stopLauncher();
  m.set(u"showPrintStatusWin", u"0");
  m.machine.processes.program = [&](const ProcessRequest&) {
    if (m.machine.processes.started.size() == 10) m.startLauncher();
  };
  const JobHandle job = byHandle(m);
  EXPECT_EQ(writeText(m, job, "x"), 1u);
  EXPECT_EQ(m.journal.count("createProcess"), 10u);
  const ProcessRequest& request = m.machine.processes.started[0];
  EXPECT_TRUE(request.commandLine.ends_with(u"\\drivers\\x64\\3\\tqpmsnd.exe"));
  EXPECT_EQ(request.showState, 0u);
  EXPECT_EQ(m.journal.count("sleep"), 10u);
  EXPECT_EQ(m.journal.last("sleep"), u"540");
  EXPECT_EQ(m.journal.count("launcher"), 0u);
  // One that has gone meanwhile is not missed.
  m.stopLauncher();
  EXPECT_EQ(DocEnd(m.records, job), 1u);
  EXPECT_EQ(m.boxes(), "");
}

TEST_F(JobTest, ABrowserInProtectedModeWritesItsShadow) {
  m.machine.processes.protectedMode = true;
  m.machine.files.folders[SpecialFolder::localApplicationData] = u"C:\\D";
  const std::u16string shadow =
      u"C:\\D\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\C\\D\\";
  m.machine.files.addDirectory(shadow);
  m.journal.before("openForWriting", [this] {
    const bool outside = m.journal.last("openForWriting").starts_with(u"C:\\out");
    m.journal.failAlways("openForWriting", outside);
    EXPECT_EQ(m.machine.modules.openHandles(), outside ? 0u : 1u);
  });
  const JobHandle job = byHandle(m);
  EXPECT_EQ(writeText(m, job, "x"), 1u);
  EXPECT_EQ(narrow(recordOf(job).outputPath), narrow(shadow + u"Re port.pdf"));
  EXPECT_EQ(m.journal.count("closeFile"), 0u);
  DocEnd(m.records, job);

  m.machine.files.folders[SpecialFolder::localApplicationData] =
      u"C:\\" + std::u16string(120, u'd');
  const JobHandle longJob = byHandle(m);
  EXPECT_EQ(writeText(m, longJob, "x"), 0u);
  EXPECT_EQ(recordOf(longJob).outputPath.size(), 259u);
  DocEnd(m.records, longJob);
}

TEST_F(JobTest, AnAbandonedLockIsAcquired) {
  SimulatedObject& lock = standingLock();
  lock.heldElsewhere = lock.abandoned = true;
  const JobHandle job = byHandle(m);
  EXPECT_EQ(writeText(m, job, "x"), 1u);
  DocEnd(m.records, job);
  EXPECT_EQ(lock.depth, 0u);
  EXPECT_FALSE(lock.abandoned);
}

TEST_F(JobTest, ALockThatCannotBeMadeIsOpenedOnceItStands) {
  m.journal.failAlways("createMutex");
  const JobHandle job = byHandle(m);
  EXPECT_EQ(m.machine.messages.debugOutput,
            (std::vector<std::u16string>{u"CreateMutex failed ", u"Device not functioning.\r\n"}));
  SimulatedObject& lock = standingLock();
  EXPECT_EQ(writeText(m, job, "x"), 1u);
  DocEnd(m.records, job);
  EXPECT_EQ(lock.depth, 0u);
}

TEST_F(JobTest, TakesNamesOfAnyLength) {
  const std::u16string document(1000, u'd');
  const JobHandle job = DocStart2K(m.records, m.officeHandle, 7, nullptr, document.c_str());
  EXPECT_EQ(recordOf(job).docName, document);
  EXPECT_EQ(writeText(m, job, "x"), 1u);
  DocEnd(m.records, job);

  // Without a job's number the newest job of the default printer is the one, with 259 characters.
  m.machine.registry.setText(u"HKCU\\Software\\Quillpress\\", u"printerName", u"Office");
  m.office.jobs = {{.jobId = 9, .document = document, .statusText = {}, .position = 1}};
  const UmDriver* const newest = DrvSplStartDoc(m.records, m.officeHandle, 0);
  ASSERT_NE(newest, nullptr);
  EXPECT_EQ(newest->jobId, 9u);
  EXPECT_EQ(newest->docName.size(), 259u);
}

TEST_F(JobTest, SettingsAreReadWhileTheJobGoesOn) {
  m.set(u"imageDPI", u"600");
  m.set(u"DocInfoSubject", u"\u00e9");
  const JobHandle handle = byHandle(m);
  const void* const job = &recordOf(handle);
  EXPECT_EQ(getIntVal(m.records, job, u"IMAGEdpi", 1), 600u);
  EXPECT_EQ(getIntVal(m.records, job, u"other", 5), 5u);
  char16_t text[4000] = {};
  EXPECT_EQ(getStringVal(m.records, job, u"DefaultSaveDir", text, std::size(text), nullptr), 1u);
  EXPECT_EQ(narrow(text), "C:\\out");
  EXPECT_EQ(getStringVal(m.records, job, u"pdfaXML", text, std::size(text), nullptr), 1u);
  EXPECT_NE(narrow(text).find("x-default'>Editor - Re%20port.doc<"), std::string::npos);
  char bytes[4000] = {};
  EXPECT_EQ(getStringMultibyte(m.records, job, "pdfaXML", bytes, sizeof bytes), 1u);
  EXPECT_NE(std::string(bytes).find("x-default'>\xc3\xa9<"), std::string::npos);
  EXPECT_EQ(m.boxes(), "");

  DocEnd(m.records, handle);
  EXPECT_EQ(getIntVal(m.records, job, u"imageDPI", 5), 5u);
  EXPECT_EQ(getStringVal(m.records, job, u"imageDPI", text, std::size(text), u"5"), 0u);
  EXPECT_EQ(getStringMultibyte(m.records, job, "pdfaXML", bytes, sizeof bytes), 0u);
  EXPECT_EQ(m.boxes(),
            "Error|getPrinterName invalid parms\n"
            "Error|getStringVal invalid parms\n"
            "Error|getStringMultibyte invalid parms\n");
}

TEST_F(JobTest, TheEndSetsDoPrintBack) {
  m.set(u"DoPrint", u"1");
  const JobHandle handle = byHandle(m);
  recordOf(handle).readDoPrint();
  EXPECT_EQ(DocEnd(m.records, handle), 1u);
  EXPECT_EQ(m.stored(u"DoPrint"), "0");
}

TEST_F(JobTest, SetupRunsForThePrinterOfTheHandle) {
  m.machine.registry.setText(u"HKCU\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run",
                             u"tqpmsnd.exe", u"C:\\2\\tqpmsnd.exe");
  DocEnd(m.records, byHandle(m));
  EXPECT_TRUE(m.journal.last("createProcess").ends_with(u" -printer=\"Office\" -installStartmenu"));
}

TEST_F(JobTest, TheSecondDoorTakesTheEndInTwoSteps) {
  UmDriver* const job = DrvSplStartDoc(m.records, m.officeHandle, m.jobNumber);
  ASSERT_NE(job, nullptr);
  EXPECT_EQ(job->docName, m.document);
  EXPECT_EQ(job->userName, u"pat");
  EXPECT_EQ(DrvSplStartPage(m.records, job), 1u);
  DrvSplAbort(m.records, job);
  EXPECT_EQ(job->status, statusInitialised | statusAborted);
  std::uint32_t written = 0;
  EXPECT_EQ(DrvSplWritePrinter(m.records, job, "%!PS", 4, written), 1u);
  m.machine.files.roomLeft = 1;
  EXPECT_EQ(DrvSplWritePrinter(m.records, job, "show", 4, written), 0u);
  EXPECT_EQ(DrvSplWritePrinter(m.records, job, "page!", 5, written), 0u);
  EXPECT_EQ(written, 5u);
  EXPECT_EQ(DrvSplEndPage(m.records, job), 1u);
  EXPECT_TRUE(DrvSplEndDoc(m.records, job));
  EXPECT_EQ(job->status, statusEnded);
  EXPECT_EQ(m.boxes(), "");

  // An ended job can be closed, and nothing else.
  EXPECT_FALSE(DrvSplEndDoc(m.records, job));
  EXPECT_EQ(DrvSplStartPage(m.records, job), 0u);
  EXPECT_EQ(DrvSplEndPage(m.records, job), 0u);
  DrvSplAbort(m.records, job);
  DrvSplClose(m.records, job);
  DrvSplClose(m.records, job);
  EXPECT_EQ(DrvSplWritePrinter(m.records, job, "x", 1, written), 0u);
  EXPECT_EQ(written, 5u);
  EXPECT_EQ(DrvSplStartDoc(m.records, {}, 0), nullptr);
  EXPECT_EQ(m.boxes(),
            "Error|DrvSplEndDoc - invalid parms\n"
            "Error|DrvSplStartPage invalid parms\n"
            "Error|DrvSplEndPage invalid parms\n"
            "Error|DrvSplAbort invalid parms\n"
            "Error|DrvSplClose - invalid parms\n"
            "Error|DrvSplWritePrinter - invalid parms\n"
            "Error|umpd - No printer handle or name\n");
  EXPECT_EQ(m.leaks(), 0u);
}

}  // namespace
