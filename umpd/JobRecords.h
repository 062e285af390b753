// JobRecords: the jobs that are going on. A job's handle is its record's address, which for the
// exported calls has to fit into 32 bits: records lie below 4 GiB, wherever the heap is.
//
// Nothing is read at an address that a caller names before it is known to be a record's. A stale or
// a wild handle finds nothing. A record that is in use lives on if another thread ends its job.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

#include "umpd/UmDriver.h"
#include "umpd/platform/Platform.h"

namespace umpd {

// Ends a record through its virtual destructor, and frees its memory.
struct JobDeleter {
  LowMemory& memory;
  void operator()(UmDriver* job) const;
};

using JobPointer = std::shared_ptr<UmDriver>;

class JobRecords;

// A job for the time of its end. When this goes, whatever ends the end, the record is no job's any
// more.
class EndingJob {
 public:
  EndingJob() = default;
  EndingJob(JobRecords& records, JobPointer job) : records_(&records), job_(std::move(job)) {}
  EndingJob(EndingJob&&) = default;
  EndingJob& operator=(EndingJob&&) = delete;
  ~EndingJob();

  explicit operator bool() const { return job_ != nullptr; }
  UmDriver* operator->() const { return job_.get(); }

 private:
  JobRecords* records_ = nullptr;
  JobPointer job_;
};

class JobRecords {
 public:
  explicit JobRecords(Platform& thePlatform) : platform(thePlatform) {}
  JobRecords(const JobRecords&) = delete;
  JobRecords& operator=(const JobRecords&) = delete;

  // A job that is going on, or null: its init failed, or there is no memory below 4 GiB.
  template <class Job>
  UmDriver* start(PrinterHandle printer, uint32_t jobId, const char16_t* name);
  // The record at the address, if it is one and has all these status bits. Otherwise null, and a
  // box with the complaint. For reading settings: a job that is being ended is found too.
  JobPointer find(const void* address, uint32_t statusBits, const char* complaint);
  // As find, but for work on a job, which its end shuts out.
  JobPointer findForWork(const void* address, uint32_t statusBits, const char* complaint);
  // As findForWork. From now on the job is being ended; of several threads one gets it.
  EndingJob beginEnd(const void* address, uint32_t statusBits, const char* complaint);
  // The address is no record's any more.
  void forget(const void* address);
  // Forgets the jobs that nobody ended, and leaves them as they are. Takes no lock: no call may be
  // under way.
  void abandon();

  Platform& platform;

 private:
  struct Entry {
    JobPointer job;
    bool ending = false;
  };
  using Jobs = std::map<const void*, Entry>;

  // Null if the record is none for these uses. Asks for the lock to be held.
  Entry* good(const void* address, uint32_t statusBits, bool alsoEnding);
  void complain(const char* complaint);

  template <class Job>
  std::shared_ptr<Job> make();
  UmDriver* add(const JobPointer& job);

  // Jobs of several threads start and end at the same time.
  std::mutex mutex_;
  // On the heap, where abandon() leaves it.
  std::unique_ptr<Jobs> jobs_ = std::make_unique<Jobs>();
};

template <class Job>
UmDriver* JobRecords::start(PrinterHandle printer, uint32_t jobId, const char16_t* name) {
  const std::shared_ptr<Job> job = make<Job>();
  if (!job || !job->init(printer, jobId, name) || job->status != statusInitialised) {
    return nullptr;
  }
  return add(job);
}

template <class Job>
std::shared_ptr<Job> JobRecords::make() {
  OwnedLowBlock block = platform.memory.allocate(sizeof(Job));
  if (!block) {
    return {};
  }
  Job* const job = new (block.get()) Job(platform);
  block.release();
  return std::shared_ptr<Job>(job, JobDeleter{platform.memory});
}

}  // namespace umpd
