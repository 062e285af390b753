// The system as POSIX has it. A signal's handler only unlinks the unfinished output and lets the
// signal end the program, so nothing else needs to look out for signals.
#include "tools/quillpress/System.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

namespace quillpress {
namespace {

namespace fs = std::filesystem;

// The name of the unfinished output, for the signal handler; empty when there is none.
std::array<char, 4096> unfinishedName{};
volatile sig_atomic_t hasUnfinished = 0;

void rememberUnfinished(const std::string& name) {
  hasUnfinished = 0;
  if (!name.empty() && name.size() < unfinishedName.size()) {
    std::copy(name.c_str(), name.c_str() + name.size() + 1, unfinishedName.begin());
    hasUnfinished = 1;
  }
}

extern "C" void removeUnfinishedAndEnd(int number) {
  if (hasUnfinished != 0) {
    ::unlink(unfinishedName.data());
  }
  ::signal(number, SIG_DFL);
  ::raise(number);
}

// A descriptor that closes itself; the standard streams' ones stay open.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(); }
  int get() const { return number_; }
  bool close() {
    const int closing = std::exchange(number_, -1);
    return closing <= STDERR_FILENO || ::close(closing) == 0;
  }

 private:
  int number_;
};

void writeAll(int file, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) {
      failFile("cannot write", path, errno);
    }
    bytes.remove_prefix(static_cast<size_t>(std::max<ssize_t>(written, 0)));
  }
}

std::string readAll(int file, const std::string& name) {
  std::string bytes;
  std::array<char, 65536> block;
  for (;;) {
    const ssize_t count = ::read(file, block.data(), block.size());
    if (count == 0) {
      return bytes;
    }
    if (count > 0) {
      bytes.append(block.data(), static_cast<size_t>(count));
    } else if (errno != EINTR) {
      failFile("cannot read", name, errno);
    }
  }
}

// The mode of the file that will be replaced, or that of any new file.
mode_t modeFor(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) {
    return status.st_mode & 07777;
  }
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

double secondsOf(clockid_t clock) {
  timespec time{};
  ::clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

}  // namespace

FileBytes::FileBytes(const std::string& path) {
  const std::string name = path == "-" ? "standard input" : path;
  const Descriptor file(path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.get() < 0) {
    failFile("cannot read", name, errno);
  }
  struct stat status {};
  if (path != "-" && ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
      status.st_size > 0) {
    const auto size = static_cast<size_t>(status.st_size);
    void* const place = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.get(), 0);
    if (place != MAP_FAILED) {
      ::madvise(place, size, MADV_SEQUENTIAL);
      mapped_ = place;
      bytes_ = {static_cast<const char*>(place), size};
      return;
    }
  }
  read_ = readAll(file.get(), name);
  bytes_ = read_;
}

FileBytes::~FileBytes() {
  if (mapped_ != nullptr) {
    ::munmap(mapped_, bytes_.size());
  }
}

struct OutputFile::State {
  std::string shownName;
  std::string place;      // what the file beside replaces; empty when written to directly
  std::string temporary;  // the name of the file beside
  std::unique_ptr<Descriptor> file;

  void openBeside(const std::string& target) {
    place = target;
    temporary = (fs::path(target).parent_path() / ".quillpress-XXXXXX").string();
    file = std::make_unique<Descriptor>(::mkstemp(temporary.data()));
    if (file->get() >= 0) {
      rememberUnfinished(temporary);
    }
  }
};

OutputFile::OutputFile(const std::string& path) : state_(std::make_unique<State>()) {
  state_->shownName = path == "-" ? "standard output" : path;
  std::error_code none;
  const fs::file_status status = path == "-" ? fs::file_status() : fs::status(path, none);
  if (path == "-") {
    state_->file = std::make_unique<Descriptor>(STDOUT_FILENO);
  } else if (!fs::exists(status) || fs::is_regular_file(status)) {
    // A link stays one: what it points to is replaced.
    const fs::path target = fs::canonical(path, none);
    state_->openBeside(target.empty() ? path : target.string());
  } else {
    state_->file = std::make_unique<Descriptor>(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  }
  if (state_->file->get() < 0) {
    state_->place.clear();
    failFile("cannot write", state_->shownName, errno);
  }
}

OutputFile::~OutputFile() {
  if (!state_->place.empty()) {
    ::unlink(state_->temporary.c_str());
    rememberUnfinished("");
  }
}

void OutputFile::write(std::string_view bytes) {
  writeAll(state_->file->get(), bytes, state_->shownName);
}

void OutputFile::commit() {
  const std::string& place = state_->place;
  const int file = state_->file->get();
  const bool modeIsSet = place.empty() || ::fchmod(file, modeFor(place)) == 0;
  if (!modeIsSet || !state_->file->close() ||
      (!place.empty() && ::rename(state_->temporary.c_str(), place.c_str()) != 0)) {
    failFile("cannot write", state_->shownName, errno);
  }
  rememberUnfinished("");
  state_->place.clear();
}

struct ScratchFile::State {
  std::unique_ptr<Descriptor> file;
};

ScratchFile::ScratchFile() : state_(std::make_unique<State>()) {
  const char* const folder = std::getenv("TMPDIR");
  std::string name = std::string(folder != nullptr ? folder : "/tmp") + "/quillpress-XXXXXX";
  state_->file = std::make_unique<Descriptor>(::mkstemp(name.data()));
  if (state_->file->get() < 0) {
    failFile("cannot write", name, errno);
  }
  ::unlink(name.c_str());
}

ScratchFile::~ScratchFile() = default;

uint64_t ScratchFile::append(std::string_view bytes) {
  writeAll(state_->file->get(), bytes, "a temporary file");
  return std::exchange(length_, length_ + bytes.size());
}

void ScratchFile::read(uint64_t place, size_t length,
                       const std::function<void(std::string_view)>& take) {
  std::array<char, 65536> block;
  while (length > 0) {
    const ssize_t count = ::pread(state_->file->get(), block.data(), std::min(length, block.size()),
                                  static_cast<off_t>(place));
    if (count == 0 || (count < 0 && errno != EINTR)) {
      failFile("cannot read", "a temporary file", count == 0 ? EIO : errno);
    }
    if (count > 0) {
      take({block.data(), static_cast<size_t>(count)});
      place += static_cast<uint64_t>(count);
      length -= static_cast<size_t>(count);
    }
  }
}

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

bool standardOutputIsTerminal() {
  return ::isatty(STDOUT_FILENO) == 1;
}

bool standardErrorIsTerminal() {
  return ::isatty(STDERR_FILENO) == 1;
}

double threadSeconds() {
  return secondsOf(CLOCK_THREAD_CPUTIME_ID);
}

double wallSeconds() {
  return secondsOf(CLOCK_MONOTONIC);
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

}  // namespace quillpress
