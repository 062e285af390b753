// What print jobs do with memory: wherever there is none left, a job ends in good order, and any
// number of them leave nothing behind.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

#include "tests/umpd/Allocations.h"
#include "tests/umpd/PrintingMachine.h"
#include "umpd/JobEntries.h"

namespace umpd {
namespace {

using enum WindowsRelease;

// Whether the work came to its end.
template <class Work>
bool withMemory(Work work) {
  try {
    work();
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

// A job of which the n-th allocation fails. False if it has fewer.
bool printWithFailure(size_t n, WindowsRelease release, bool byHandle, const char16_t* mode) {
  PrintingMachine m(release);
  m.startLauncher();
  if (*mode) {
    m.set(mode, u"1");
  }
  Allocations::failed = false;
  Allocations::left = n;
  JobHandle job = 0;
  uint32_t wrote = 0;
  withMemory([&] {
    job = byHandle ? DocStart2K(m.records, m.officeHandle, m.jobNumber, nullptr, m.document)
                   : DocStart(m.records, u"Office");
  });
  bool ended = true;
  if (job != 0) {
    withMemory([&] { wrote = DocWrite(m.records, job, "%!PS", 4); });
    ended = withMemory([&] { DocEnd(m.records, job); });
  }
  Allocations::left = 0;
  EXPECT_TRUE(m.lockIsFree());
  EXPECT_TRUE(m.machine.spooler.impersonating);
  EXPECT_EQ(m.leaks(), 0u);
  EXPECT_EQ(m.machine.objects.hangs, 0u);
  EXPECT_TRUE(Allocations::failed || (wrote == 1 && ended));
  return Allocations::failed;
}

TEST(JobMemory, WhereverItEndsTheJobEndsInGoodOrder) {
  const struct {
    WindowsRelease release;
    bool byHandle;
    const char16_t* mode;
  } jobs[] = {{windows7, true, u""},
              {windows7, true, u"FinishPrintEv"},
              {windows2000, false, u"passthru"},
              {nt4, false, u""},
              {windows98, false, u""}};
  for (const auto& [release, byHandle, mode] : jobs) {
    size_t n = 1;
    while (printWithFailure(n, release, byHandle, mode) && !testing::Test::HasFailure()) {
      ++n;
    }
    ASSERT_FALSE(testing::Test::HasFailure()) << "allocation " << n;
    EXPECT_GT(n, 100u);
  }
}

// As many jobs as JOBS says; scripts/soak asks for more than the tests do.
TEST(JobMemory, JobsLeaveNothingBehind) {
  const char* asked = std::getenv("JOBS");
  const int jobsToPrint = asked ? std::atoi(asked) : 300;
  ASSERT_GT(jobsToPrint, 10);
  PrintingMachine m(windows7);
  m.startLauncher();
  const auto print = [&](int jobs) {
    for (int i = 0; i < jobs; ++i) {
      const JobHandle job = DocStart2K(m.records, m.officeHandle, m.jobNumber, nullptr, m.document);
      ASSERT_EQ(DocWrite(m.records, job, "%!PS", 4), 1u);
      ASSERT_EQ(DocEnd(m.records, job), 1u);
      ASSERT_TRUE(m.machine.files.remove(m.file));
      m.journal.clear();
    }
  };
  print(10);
  const int64_t before = Allocations::alive;
  print(jobsToPrint);
  EXPECT_EQ(Allocations::alive, before);
  EXPECT_EQ(m.leaks(), 0u);
}

}  // namespace
}  // namespace umpd
