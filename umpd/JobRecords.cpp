// The map holds each job by a shared pointer, and so does every call while it works on the job:
// whichever of them goes last ends the record. An entry that is marked as ending is good for
// reading settings only.
#include "umpd/JobRecords.h"

#include "umpd/Report.h"

namespace umpd {

void JobDeleter::operator()(UmDriver* job) const {
  // The block begins where the record does, whichever class it is of.
  const auto block = reinterpret_cast<std::byte*>(job);
  job->~UmDriver();
  memory.close(block);
}

EndingJob::~EndingJob() {
  if (job_) {
    records_->forget(job_.get());
  }
}

// Under its address, which nobody else can have as long as the record exists.
UmDriver* JobRecords::add(const JobPointer& job) {
  const std::lock_guard lock(mutex_);
  jobs_->emplace(job.get(), Entry{job});
  return job.get();
}

// The address is only compared until it is known to be a record's.
JobRecords::Entry* JobRecords::good(const void* address, uint32_t statusBits, bool alsoEnding) {
  const auto found = jobs_->find(address);
  if (found == jobs_->end() || (found->second.ending && !alsoEnding)) {
    return nullptr;
  }
  const UmDriver& job = *found->second.job;
  const bool isGood = job.magic == UmDriver::magicWord && (job.status & statusBits) == statusBits;
  return isGood ? &found->second : nullptr;
}

JobPointer JobRecords::find(const void* address, uint32_t statusBits, const char* complaint) {
  {
    const std::lock_guard lock(mutex_);
    if (const Entry* const entry = good(address, statusBits, true)) {
      return entry->job;
    }
  }
  complain(complaint);
  return nullptr;
}

JobPointer JobRecords::findForWork(const void* address, uint32_t statusBits,
                                   const char* complaint) {
  {
    const std::lock_guard lock(mutex_);
    if (const Entry* const entry = good(address, statusBits, false)) {
      return entry->job;
    }
  }
  complain(complaint);
  return nullptr;
}

EndingJob JobRecords::beginEnd(const void* address, uint32_t statusBits, const char* complaint) {
  {
    const std::lock_guard lock(mutex_);
    if (Entry* const entry = good(address, statusBits, false)) {
      entry->ending = true;
      return {*this, entry->job};
    }
  }
  complain(complaint);
  return {};
}

void JobRecords::forget(const void* address) {
  JobPointer last;  // ends after the lock's release
  const std::lock_guard lock(mutex_);
  if (const auto found = jobs_->find(address); found != jobs_->end()) {
    last = std::move(found->second.job);
    jobs_->erase(found);
  }
}

void JobRecords::complain(const char* complaint) {
  showErrorBox(platform, "%s", complaint);
}

// The map stays on the heap for good: its jobs would call the spooler while they end.
void JobRecords::abandon() {
  static_cast<void>(jobs_.release());
}

}  // namespace umpd
