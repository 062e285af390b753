#include "umpd/PrinterInfo.h"

#include <cstddef>
#include <cstdint>

#include "tests/umpd/OnMachine.h"

namespace umpd {
namespace {

JobInfo job(uint32_t id, uint32_t position, uint32_t status = 0) {
  return {.jobId = id,
          .document = u"document " + std::u16string(1, static_cast<char16_t>(u'0' + id)),
          .statusText = {},
          .status = status,
          .position = position};
}

class PrinterInfoTest : public OnMachine {
 protected:
  SimulatedPrinter& printer_ = machine_.spooler.add(u"Office", u"TQP1:");
  PrinterHandle handle_ = machine_.spooler.handleOf(printer_);
};

TEST_F(PrinterInfoTest, TheReaderKeepsOneRecordAndDropsItOnFailure) {
  PrinterInfoReader reader(platform_);
  EXPECT_EQ(reader.readPrinterInfo2(), nullptr);
  EXPECT_EQ(machine_.journal.count("printerSize"), 0u) << "there was no handle to ask for";
  reader.printer = handle_;
  ASSERT_NE(reader.readPrinterInfo2(), nullptr);
  EXPECT_EQ(reader.readPrinterInfo2()->printerName, u"Office");
  machine_.journal.failAlways("printerSize");
  EXPECT_EQ(reader.readPrinterInfo2(), nullptr);
  machine_.journal.failAlways("printerSize", false);
  machine_.journal.before("printer", [&] { printer_.name = u"A much longer name than before"; });
  EXPECT_EQ(reader.readPrinterInfo2(), nullptr) << "the record outgrew the size";
}

TEST_F(PrinterInfoTest, AllJobsCountsWhatThePrinterCounts) {
  EXPECT_EQ(getAllJobs(platform_, handle_).count, 0u);
  EXPECT_EQ(machine_.journal.count("jobsSize"), 0u);
  printer_.jobs = {job(1, 1), job(2, 2), job(3, 3)};
  EXPECT_EQ(getAllJobs(platform_, handle_).listed.size(), 3u);

  machine_.journal.before("jobs", [&] { printer_.jobs.resize(1); });
  const auto shrunk = getAllJobs(platform_, handle_);
  EXPECT_EQ(shrunk.count, 3u);
  ASSERT_EQ(shrunk.listed.size(), 1u);
  EXPECT_EQ(shrunk.listed[0].jobId, 1u);

  machine_.journal.before("jobs", [] {});
  machine_.journal.before("jobsSize", [&] { printer_.jobs.push_back(job(4, 4)); });
  const auto grown = getAllJobs(platform_, handle_);
  ASSERT_EQ(grown.listed.size(), 1u) << "the one that came meanwhile is left out";
  EXPECT_EQ(grown.listed[0].jobId, 1u);
}

TEST_F(PrinterInfoTest, AnAbsurdNumberOfJobsCostsNoMemory) {
  printer_.jobs = {job(1, 1), job(2, 2, 1)};
  PrinterSettings settings(platform_);
  settings.setPrinterName(u"Office");
  for (const uint32_t absurd : {0x7FFFFFFFu, 0xFFFFFFFFu}) {
    printer_.reportedJobs = absurd;
    EXPECT_EQ(getAllJobs(platform_, handle_).count, absurd);
    EXPECT_EQ(getAllJobs(platform_, handle_).listed.size(), 2u);
    EXPECT_FALSE(checkJobStatus(platform_, handle_, 2));
    std::u16string document;
    EXPECT_EQ(getCurrentPrintJobDocName(settings, document), 2u);
  }
}

TEST_F(PrinterInfoTest, AnyFailureMeansNoJobs) {
  printer_.jobs = {job(1, 1)};
  for (size_t n = 1; n <= 4; ++n) {
    machine_.journal.failCall(n);
    EXPECT_EQ(getAllJobs(platform_, handle_).count, 0u) << n;
  }
  EXPECT_EQ(getAllJobs(platform_, handle_).count, 1u);
}

TEST_F(PrinterInfoTest, TheJobInHandIsTheFirstOfTheHighestPosition) {
  const std::pair<std::vector<JobInfo>, uint32_t> cases[] = {{{}, 0},
                                                             {{job(1, 1), job(2, 2), job(3, 3)}, 3},
                                                             {{job(5, 7), job(6, 7), job(7, 2)}, 5},
                                                             {{job(8, 0xFFFFFFFF)}, 0}};
  PrinterSettings settings(platform_);
  settings.printerName = u"Office";
  std::u16string document;
  for (const auto& [jobs, id] : cases) {
    printer_.jobs = jobs;
    document = u"left over";
    EXPECT_EQ(getCurrentPrintJobDocName(settings, document), id);
    EXPECT_EQ(document, id ? *job(id, 0).document : u"");
  }
  printer_.jobs = {job(1, 1)};
  printer_.jobs[0].document.reset();
  document = u"left over";
  EXPECT_EQ(getCurrentPrintJobDocName(settings, document), 1u);
  EXPECT_EQ(document, u"");
  printer_.jobs[0].document = std::u16string(400, u'n');
  getCurrentPrintJobDocName(settings, document);
  EXPECT_EQ(document.size(), 259u);
  EXPECT_EQ(machine_.journal.count("openPrinter"), 1u) << "the settings keep the handle";
  EXPECT_EQ(machine_.spooler.lastAccess, 8u);
  PrinterSettings nowhere(platform_);
  nowhere.printerName = u"Nowhere";
  document = u"as it was";
  EXPECT_EQ(getCurrentPrintJobDocName(nowhere, document), 0u);
  EXPECT_EQ(document, u"as it was");
}

TEST_F(PrinterInfoTest, TroubleIsTheMask) {
  EXPECT_TRUE(checkJobStatus(platform_, handle_, 1)) << "no jobs";
  const std::pair<uint32_t, bool> cases[] = {
      {0, true},      {1, false},    {2, false},     {4, true},         {8, true},
      {0x10, true},   {0x20, false}, {0x40, false},  {0x80, true},      {0x100, true},
      {0x200, false}, {0x400, true}, {4 | 1, false}, {0xFFFFFD9C, true}};
  for (const auto& [status, healthy] : cases) {
    printer_.jobs = {job(1, 1, 0x263), job(2, 2, status)};
    EXPECT_EQ(checkJobStatus(platform_, handle_, 2), healthy) << status;
    EXPECT_TRUE(checkJobStatus(platform_, handle_, 9)) << "unknown job";
  }
}

TEST(BuildDevMode, NamesTheDeviceByItsLastComponent) {
  const std::u16string fits(31, u'd');
  const std::pair<std::u16string, std::u16string> cases[] = {{u"\\\\server\\laser", u"laser"},
                                                             {u"laser", u"laser"},
                                                             {u"ends\\", u""},
                                                             {fits, fits},
                                                             {u"\\\\server\\d" + fits, fits}};
  for (const auto& [name, device] : cases) {
    EXPECT_EQ(buildDevMode(name).deviceName, device);
  }
}

}  // namespace
}  // namespace umpd
