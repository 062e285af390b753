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

#include "umpd/UmDriver.h"
#include "umpd/platform/Platform.h"

namespace umpd {

// Ends a record through its virtual destructor, and gives its memory back.
struct JobDeleter {
  LowMemory& memory;
  void operator()(UmDriver* job) const;
};

using JobPointer = std::shared_ptr<UmDriver>;

class JobRecords {
 public:
  explicit JobRecords(Platform& thePlatform) : platform(thePlatform) {}
  JobRecords(const JobRecords&) = delete;
  JobRecords& operator=(const JobRecords&) = delete;

  // A job that is going on, or null: its init failed, or there is no memory below 4 GiB.
  template <class Job>
  UmDriver* start(PrinterHandle printer, uint32_t jobId, const char16_t* name);
  // The record at the address, if it is one and has all these status bits. Otherwise null, and a
  // box with the complaint.
  JobPointer find(const void* address, uint32_t statusBits, const char* complaint);
  // As find, and the address is no record's any more. Of several threads one gets the record.
  JobPointer take(const void* address, uint32_t statusBits, const char* complaint);
  // Forgets the jobs that nobody ended, and leaves them as they are. Takes no lock: no call may be
  // under way.
  void abandon();

  Platform& platform;

 private:
  using Jobs = std::map<const void*, JobPointer>;

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
