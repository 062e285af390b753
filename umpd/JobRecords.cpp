#include "umpd/JobRecords.h"

#include "umpd/Report.h"

void JobDeleter::operator()(UmDriver* job) const {
  // The block begins where the record does, whichever class it is of.
  const auto block = reinterpret_cast<std::byte*>(job);
  job->~UmDriver();
  memory->close(block);
}

UmDriver* JobRecords::add(OwnedJob<UmDriver> job) {
  UmDriver* const record = job.get();
  const std::lock_guard lock(mutex_);
  jobs_.emplace(record, std::move(job));
  return record;
}

UmDriver* JobRecords::find(const void* address, std::uint32_t statusBits, const char* complaint) {
  {
    const std::lock_guard lock(mutex_);
    const auto found = jobs_.find(address);
    if (found != jobs_.end()) {
      UmDriver* const job = found->second.get();
      if (job->magic == UmDriver::magicWord && (job->status & statusBits) == statusBits) return job;
    }
  }
  showErrorBox(platform, "%s", complaint);
  return nullptr;
}

// A record takes its time to end, so the lock is given back before.
void JobRecords::remove(const UmDriver* job) {
  std::unique_lock lock(mutex_);
  const auto ended = jobs_.extract(job);
  lock.unlock();
}

void JobRecords::abandon() {
  for (auto& [address, job] : jobs_) static_cast<void>(job.release());
  jobs_.clear();
}
