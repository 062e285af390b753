#include "umpd/DrvSpl.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "tests/umpd/PrintingMachine.h"

namespace umpd {
namespace {

TEST(DrvSpl, TakesTheEndOfAJobInTwoSteps) {
  PrintingMachine m(WindowsRelease::windows7);
  m.startLauncher();
  // By its number a job is found, without one the newest is taken for it.
  m.machine.registry.setText(u"HKCU\\Software\\Quillpress\\", u"printerName", u"Office");
  m.office.jobs.push_back({.jobId = 8, .document = u"new", .statusText = {}, .position = 2});
  EXPECT_EQ(DrvSplStartDoc(m.records, m.officeHandle, 0)->docName, u"new");
  UmDriver* const job = DrvSplStartDoc(m.records, m.officeHandle, m.jobNumber);
  EXPECT_EQ(job->docName, m.document);
  EXPECT_EQ(job->userName, u"pat");
  DrvSplAbort(m.records, job);
  EXPECT_EQ(job->status, statusInitialised | statusAborted);
  uint32_t written = 0;
  EXPECT_EQ(DrvSplWritePrinter(m.records, job, "%!PS", 4, written), 1u);
  m.machine.files.roomLeft = 1;
  EXPECT_EQ(DrvSplWritePrinter(m.records, job, "show", 4, written), 0u);
  EXPECT_EQ(DrvSplWritePrinter(m.records, job, "page!", 5, written), 0u);
  EXPECT_EQ(written, 5u);
  EXPECT_EQ(DrvSplStartPage(m.records, job), 1u);
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
}

}  // namespace
}  // namespace umpd
