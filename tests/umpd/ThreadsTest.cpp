// What a process's threads share in the front end. Run under ThreadSanitizer it sees what is not
// guarded; without it, it sees what was done twice.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <thread>
#include <vector>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/PrintingMachine.h"
#include "umpd/Folders.h"
#include "umpd/JobEntries.h"
#include "umpd/UserHive.h"

namespace umpd {
namespace {

constexpr int threadCount = 4;

void inThreads(const std::function<void(int)>& work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < threadCount; ++i) {
    threads.emplace_back(work, i);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

using Threads = OnMachine;

TEST_F(Threads, AskOnceForWhatTheirProcessKeeps) {
  machine_.accounts.controller = u"\\\\DC1";
  inThreads([this](int) {
    for (int i = 0; i < 50; ++i) {
      EXPECT_EQ(getDomainControllerName(platform_), u"\\\\DC1");
    }
  });
  EXPECT_EQ(machine_.journal.count("domainController"), 1u);
  EXPECT_EQ(machine_.journal.count("mapView"), 1u);
  inThreads([this](int) {
    for (int i = 0; i < 50; ++i) {
      EXPECT_TRUE(getDriverDirectory(platform_, pathCapacity));
    }
  });
  EXPECT_EQ(machine_.journal.count("driverDirectory"), 1u);
}

// Each on a machine of its own, as the simulated one is for one thread at a time.
TEST(Jobs, OfSeveralThreadsShareTheListOfObjects) {
  inThreads([](int) {
    for (int i = 0; i < 20; ++i) {
      PrintingMachine m(WindowsRelease::windows7);
      m.startLauncher();
      const JobHandle job = DocStart2K(m.records, m.officeHandle, m.jobNumber, nullptr, m.document);
      EXPECT_EQ(DocWrite(m.records, job, "%!PS", 4), 1u);
      EXPECT_EQ(DocEnd(m.records, job), 1u);
      EXPECT_EQ(m.machine.files.content(m.file), "%!PS");
    }
  });
}

// Reads of settings and the writes of a job's end meet in the map.
TEST_F(Threads, ReadSettingsWhileOthersAreWritten) {
  StringMap map(platform_.messages);
  inThreads([&](int thread) {
    for (int i = 0; i < 200; ++i) {
      if (thread % 2 == 0) {
        map.set(u"DocName", std::u16string(static_cast<size_t>(i % 40), u'd'));
      } else {
        const auto value = map.find(u"docname");
        EXPECT_TRUE(!value || value->find_first_not_of(u'd') == std::u16string::npos);
        EXPECT_LE(map.pairs().size(), 1u);
      }
    }
  });
}

// The read falls between the last message of a job's end and the emptying of its record. Nothing
// but a relaxed flag passes between the two threads from then on.
TEST(Jobs, AreReadByOtherThreadsWhileTheyEnd) {
  PrintingMachine m(WindowsRelease::windows7);
  m.startLauncher();
  m.set(u"imageDPI", u"600");
  const JobHandle job = DocStart2K(m.records, m.officeHandle, m.jobNumber, nullptr, m.document);
  EXPECT_EQ(DocWrite(m.records, job, "%!PS", 4), 1u);
  const void* const record = reinterpret_cast<const void*>(uintptr_t{job});
  std::atomic<bool> hasRead = false;
  std::thread reader;
  m.journal.before("setEvent", [&] {
    reader = std::thread([&] {
      EXPECT_EQ(getIntVal(m.records, record, u"imageDPI", 5), 600u);
      hasRead.store(true, std::memory_order_relaxed);
    });
    while (!hasRead.load(std::memory_order_relaxed)) {
      std::this_thread::yield();
    }
  });
  EXPECT_EQ(DocEnd(m.records, job), 1u);
  reader.join();
  EXPECT_EQ(m.boxes(), "");
}

}  // namespace
}  // namespace umpd
