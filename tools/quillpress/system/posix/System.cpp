#include "tools/quillpress/system/System.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace quillpress {
namespace {

// The unfinished output for the signal handler, which may touch nothing more complicated.
std::array<char, 4096> unfinishedName{};
volatile sig_atomic_t hasUnfinished = 0;

extern "C" void removeUnfinishedAndEnd(int number) {
  if (hasUnfinished != 0) {
    ::unlink(unfinishedName.data());
  }
  ::signal(number, SIG_DFL);
  ::raise(number);
}

}  // namespace

std::vector<std::string> systemArguments(int argc, char** argv) {
  return {argv, argv + argc};
}

void makeStandardStreamsBinary() {}

void prepareSignals() {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action {};
    ::sigaction(number, nullptr, &action);
    // What the caller had ignored (nohup) stays ignored.
    if (action.sa_handler == SIG_DFL) {
      action.sa_handler = removeUnfinishedAndEnd;
      ::sigaction(number, &action, nullptr);
    }
  }
  ::signal(SIGPIPE, SIG_IGN);
  ::signal(SIGXFSZ, SIG_IGN);
}

void setUnfinishedFile(const std::filesystem::path& path) {
  const std::string name = path.string();
  hasUnfinished = 0;
  if (!name.empty() && name.size() < unfinishedName.size()) {
    std::copy(name.c_str(), name.c_str() + name.size() + 1, unfinishedName.begin());
    hasUnfinished = 1;
  }
}

std::filesystem::path systemPath(const std::string& utf8) {
  return utf8;
}

int openToRead(const std::filesystem::path& path) {
  return ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

int openToWrite(const std::filesystem::path& path) {
  return ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
}

int createBeside(const std::filesystem::path& place, std::filesystem::path& made) {
  std::string name = (place.parent_path() / ".quillpress-XXXXXX").string();
  const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
  made = name;
  return descriptor;
}

int createScratch() {
  const char* const folder = std::getenv("TMPDIR");
  std::string name = std::string(folder != nullptr ? folder : "/tmp") + "/quillpress-XXXXXX";
  const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
  if (descriptor >= 0) {
    ::unlink(name.c_str());
  }
  return descriptor;
}

bool setPermissions(int descriptor, const std::filesystem::path& replaced) {
  struct stat status {};
  if (::stat(replaced.c_str(), &status) == 0) {
    return ::fchmod(descriptor, status.st_mode & 07777) == 0;
  }
  // The mask can only be read by setting it.
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return ::fchmod(descriptor, 0666 & ~mask) == 0;
}

bool seekTo(int descriptor, uint64_t place) {
  return ::lseek(descriptor, static_cast<off_t>(place), SEEK_SET) >= 0;
}

const void* mapFile(int descriptor, size_t& size) {
  struct stat status {};
  if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size <= 0) {
    return nullptr;
  }
  size = static_cast<size_t>(status.st_size);
  void* const place = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
  if (place == MAP_FAILED) {
    return nullptr;
  }
  ::madvise(place, size, MADV_SEQUENTIAL);
  return place;
}

void unmapFile(const void* place, size_t size) {
  ::munmap(const_cast<void*>(place), size);
}

bool isDiskFull(int error) {
  return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

double threadSeconds() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

uint64_t memoryInUse() {
  // Pages in all, resident, and of those shared with files.
  unsigned long total = 0;
  unsigned long resident = 0;
  unsigned long shared = 0;
  FILE* const file = std::fopen("/proc/self/statm", "re");
  if (file == nullptr) {
    return 0;
  }
  const int found = std::fscanf(file, "%lu %lu %lu", &total, &resident, &shared);
  std::fclose(file);
  return found == 3 ? (resident - shared) * static_cast<uint64_t>(::sysconf(_SC_PAGESIZE)) : 0;
}

#if defined(__SANITIZE_ADDRESS__)
#define QUILLPRESS_HAS_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUILLPRESS_HAS_ADDRESS_SANITIZER
#endif
#endif

// AddressSanitizer maps more than any limit for itself.
void limitMemory([[maybe_unused]] uint64_t bytes) {
#ifndef QUILLPRESS_HAS_ADDRESS_SANITIZER
  // For stacks, and for what the program holds besides the pages.
  constexpr uint64_t besides = uint64_t{64} << 20;
  rlimit limit{};
  ::getrlimit(RLIMIT_DATA, &limit);
  limit.rlim_cur = std::min<rlim_t>(bytes + besides, limit.rlim_max);
  ::setrlimit(RLIMIT_DATA, &limit);
#endif
}

}  // namespace quillpress
