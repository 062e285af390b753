// A worker's results go to shared memory, so that those before a crash are known. Its own timer
// ends a worker that spends too long on one program.
#include "bench/compare/Workers.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>

#include "bench/compare/Transcript.h"

namespace bench {

namespace {

constexpr int secondsForOne = 1;
constexpr rlim_t addressSpace = rlim_t{4} << 30;

// From now on the process ends after so many seconds of processor time.
void allow(int seconds) {
  itimerval timer{};
  timer.it_value.tv_sec = seconds;
  setitimer(ITIMER_PROF, &timer, nullptr);
}

pid_t startWorker(const std::function<void()>& work) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child != 0) {
    return child;
  }
  const rlimit limit{addressSpace, addressSpace};
  setrlimit(RLIMIT_AS, &limit);
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  // What a library has to say of its crash is shown by the difference.
  work();
  _exit(0);
}

BatchResult::End waitFor(pid_t worker) {
  int status = 0;
  waitpid(worker, &status, 0);
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
    return BatchResult::End::normal;
  }
  if (WIFEXITED(status) && WEXITSTATUS(status) == 2) {
    std::exit(2);  // the library could not be loaded, as its worker has said
  }
  return WIFSIGNALED(status) && WTERMSIG(status) == SIGPROF ? BatchResult::End::outOfTime
                                                            : BatchResult::End::crash;
}

// An array of numbers that a worker and its parent share; all 0 at first.
class SharedNumbers {
 public:
  explicit SharedNumbers(size_t count) : bytes_(count * sizeof(uint64_t)) {
    void* memory = mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
      std::perror("mmap");
      std::exit(2);
    }
    numbers_ = static_cast<uint64_t*>(memory);
  }
  SharedNumbers(const SharedNumbers&) = delete;
  SharedNumbers& operator=(const SharedNumbers&) = delete;
  ~SharedNumbers() { munmap(numbers_, bytes_); }
  uint64_t& operator[](size_t i) { return numbers_[i]; }

 private:
  size_t bytes_;
  uint64_t* numbers_;
};

// The numbers: how many programs are done, the hash of all objects, then the programs' hashes.
void workThrough(const std::string& path, const Jobs& jobs, uint64_t first, uint64_t last,
                 SharedNumbers& results) {
  const ConverterLibrary library(path);
  for (uint64_t number = first; number < last; ++number) {
    const programs::Program program = jobs.program(number);
    allow(secondsForOne);
    results[2 + (number - first)] = hashOf(transcriptOf(library, program));
    results[0] = number - first + 1;
  }
  results[1] = hashOf(allObjects(library));
}

}  // namespace

std::vector<BatchResult> runBatch(const std::vector<std::string>& libraries, const Jobs& jobs,
                                  uint64_t first, uint64_t last) {
  SharedNumbers numbers[2] = {SharedNumbers(last - first + 2), SharedNumbers(last - first + 2)};
  pid_t workers[2];
  for (size_t i = 0; i < 2; ++i) {
    workers[i] = startWorker([&, i] { workThrough(libraries[i], jobs, first, last, numbers[i]); });
  }
  std::vector<BatchResult> results(2);
  for (size_t i = 0; i < 2; ++i) {
    results[i].end = waitFor(workers[i]);
    results[i].objects = numbers[i][1];
    for (uint64_t done = 0; done < numbers[i][0]; ++done) {
      results[i].hashes.push_back(numbers[i][2 + done]);
    }
  }
  return results;
}

SingleResult runLast(const std::string& library, const std::vector<programs::Program>& programs,
                     int seconds) {
  int ends[2];
  if (pipe(ends) != 0) {
    std::perror("pipe");
    std::exit(2);
  }
  const pid_t worker = startWorker([&] {
    const ConverterLibrary loaded(library);
    std::string text;
    for (const programs::Program& program : programs) {
      allow(seconds);
      text = transcriptOf(loaded, program);
    }
    for (size_t at = 0; at < text.size();) {
      const ssize_t written = write(ends[1], text.data() + at, text.size() - at);
      if (written <= 0) {
        _exit(1);
      }
      at += static_cast<size_t>(written);
    }
  });
  close(ends[1]);
  SingleResult result;
  char buffer[65536];
  for (ssize_t got; (got = read(ends[0], buffer, sizeof(buffer))) > 0;) {
    result.transcript.append(buffer, static_cast<size_t>(got));
  }
  close(ends[0]);
  result.end = waitFor(worker);
  return result;
}

}  // namespace bench
