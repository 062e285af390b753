#include "umpd/JobRecords.h"

#include "umpd/Report.h"

namespace umpd {

void JobDeleter::operator()(UmDriver* job) const {
  // The block begins where the record does, whichever class it is of.
  const auto block = reinterpret_cast<std::byte*>(job);
  job->~UmDriver();
  memory.close(block);
}

UmDriver* JobRecords::add(const JobPointer& job) {
  const std::lock_guard lock(mutex_);
  jobs_->emplace(job.get(), job);
  return job.get();
}

JobPointer JobRecords::find(const void* address, uint32_t statusBits, const char* complaint) {
  {
    const std::lock_guard lock(mutex_);
    const auto found = jobs_->find(address);
    if (found != jobs_->end()) {
      const JobPointer& job = found->second;
      if (job->magic == UmDriver::magicWord && (job->status & statusBits) == statusBits) {
        return job;
      }
    }
  }
  showErrorBox(platform, "%s", complaint);
  return nullptr;
}

JobPointer JobRecords::take(const void* address, uint32_t statusBits, const char* complaint) {
  JobPointer job = find(address, statusBits, complaint);
  const std::lock_guard lock(mutex_);
  if (job && jobs_->erase(address) == 0) {
    return nullptr;
  }
  return job;
}

void JobRecords::abandon() {
  static_cast<void>(jobs_.release());
}

}  // namespace umpd
