#include "umpd/JobRecords.h"

#include "umpd/Report.h"

void JobDeleter::operator()(UmDriver* job) const {
  // The block begins where the record does, whichever class it is of.
  const auto block = reinterpret_cast<std::byte*>(job);
  job->~UmDriver();
  memory.close(block);
}

UmDriver* JobRecords::add(const JobPointer& job) {
  const std::lock_guard lock(mutex);
  jobs->emplace(job.get(), job);
  return job.get();
}

JobPointer JobRecords::find(const void* address, std::uint32_t statusBits, const char* complaint) {
  {
    const std::lock_guard lock(mutex);
    const auto found = jobs->find(address);
    if (found != jobs->end()) {
      const JobPointer& job = found->second;
      if (job->magic == UmDriver::magicWord && (job->status & statusBits) == statusBits) return job;
    }
  }
  showErrorBox(platform, "%s", complaint);
  return nullptr;
}

JobPointer JobRecords::take(const void* address, std::uint32_t statusBits, const char* complaint) {
  JobPointer job = find(address, statusBits, complaint);
  const std::lock_guard lock(mutex);
  if (job && jobs->erase(address) == 0) return nullptr;
  return job;
}

void JobRecords::abandon() {
  static_cast<void>(jobs.release());
}
