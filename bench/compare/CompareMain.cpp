// Compares two builds of the library on random programs or files. scripts/compare-with is the
// command for users, and its --help tells the rest.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "bench/compare/Minimiser.h"
#include "bench/compare/Transcript.h"
#include "bench/compare/Workers.h"

namespace {

using bench::BatchResult;
using bench::SingleResult;
using programs::Program;

struct Options {
  std::vector<std::string> libraries;  // the one to compare with, then the one to judge
  uint64_t first = 0, last = 100000;
  uint64_t batch = 200;
  uint64_t mostDifferences = 5;
  bool show = false;
  std::vector<std::string> files;
};

[[noreturn]] void usage() {
  std::fprintf(stderr,
               "usage: compare_libraries OLD NEW [--seeds FROM:TO] [--batch N] [--most N]\n"
               "                         [--show] [--files FILE...]\n");
  std::exit(2);
}

Options parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    const bool more = i + 1 < argc;
    if (word == "--files") {
      options.files.assign(argv + i + 1, argv + argc);
      break;
    } else if (word == "--show") {
      options.show = true;
    } else if (word == "--seeds" && more) {
      char* end = nullptr;
      options.first = std::strtoull(argv[++i], &end, 10);
      options.last = *end == ':' ? std::strtoull(end + 1, nullptr, 10) : options.first + 1;
    } else if (word == "--batch" && more) {
      options.batch = std::strtoull(argv[++i], nullptr, 10);
    } else if (word == "--most" && more) {
      options.mostDifferences = std::strtoull(argv[++i], nullptr, 10);
    } else if (word.starts_with("--")) {
      usage();
    } else {
      options.libraries.push_back(word);
    }
  }
  if (options.libraries.size() != 2 || options.first >= options.last || options.batch == 0) {
    usage();
  }
  return options;
}

const char* nameOf(BatchResult::End end) {
  return end == BatchResult::End::normal      ? ""
         : end == BatchResult::End::outOfTime ? "ran out of time\n"
                                              : "crashed\n";
}

void show(const Program& program) {
  for (const programs::Call& call : program) {
    std::printf("-- %s%s %u\n%s\n", call.secondConverter ? "second converter, " : "",
                call.kind == programs::Call::Kind::startPage    ? "new page, matrix"
                : call.kind == programs::Call::Kind::convertNul ? "call up to a NUL, bytes"
                                                                : "call, bytes",
                call.kind == programs::Call::Kind::startPage
                    ? call.matrix
                    : static_cast<uint32_t>(call.text.size()),
                bench::printable(call.text).c_str());
  }
}

// The place in the transcript where the program first met the library's limit of memory, npos for
// none. What a library without a limit, or with another one, makes of the rest says nothing.
size_t placeOfLimit(const SingleResult& result) {
  return result.transcript.find("the program needs more memory than it may have");
}

// Runs batches, and looks closely at those whose results differ.
class Comparison {
 public:
  Comparison(const Options& options, const bench::Jobs& jobs) : options_(options), jobs_(jobs) {}

  void run(uint64_t first, uint64_t last) {
    while (first < last && differences_ < options_.mostDifferences) {
      // Batches begin at multiples of their size, so that a seed's is known.
      const uint64_t end = std::min(last, (first / options_.batch + 1) * options_.batch);
      first = runOne(first, end);
      if (isatty(1) && first % (options_.batch * 50) == 0) {
        std::fprintf(stderr, "\r%llu", static_cast<unsigned long long>(first));
      }
    }
  }

  uint64_t compared() const { return compared_; }
  uint64_t leftOut() const { return leftOut_; }
  uint64_t differences() const { return differences_; }

 private:
  // Gives the number to go on with.
  uint64_t runOne(uint64_t first, uint64_t last) {
    const std::vector<BatchResult> results =
        bench::runBatch(options_.libraries, jobs_, first, last);
    const std::vector<uint64_t>&a = results[0].hashes, &b = results[1].hashes;
    const size_t both = std::min(a.size(), b.size());
    for (size_t i = 0; i < both; ++i) {
      ++compared_;
      if (a[i] != b[i]) {
        report(first, first + i);
        return first + i + 1;
      }
    }
    if (both < last - first) {  // one of them did not come to the end
      const bool bothOutOfTime = results[0].end == BatchResult::End::outOfTime &&
                                 results[1].end == BatchResult::End::outOfTime &&
                                 a.size() == b.size();
      if (bothOutOfTime) {
        ++leftOut_;
      } else {
        report(first, first + both);
      }
      return first + both + 1;
    }
    if (results[0].objects != results[1].objects) {
      ++differences_;
      std::printf("== DIFFERENCE: the objects after %s to %s, though those of each were equal\n",
                  jobs_.name(first).c_str(), jobs_.name(last - 1).c_str());
    }
    return last;
  }

  SingleResult runUnder(size_t library, const std::vector<Program>& programs) const {
    return bench::runLast(options_.libraries[library], programs, 10);
  }
  bool differ(const std::vector<Program>& programs) const {
    const SingleResult a = runUnder(0, programs), b = runUnder(1, programs);
    const size_t limit = std::min(placeOfLimit(a), placeOfLimit(b));
    if (limit != std::string::npos) {
      // Up to the call that failed there all must be the same, if both came so far.
      const size_t same = a.transcript.rfind("failed\n", limit);
      return a.end == b.end && a.transcript.compare(0, same, b.transcript, 0, same) != 0;
    }
    // How far a program comes before its time is over says nothing.
    return a.end != b.end || (a.end == BatchResult::End::normal && a.transcript != b.transcript);
  }

  void report(uint64_t first, uint64_t number) {
    std::vector<Program> before;
    for (uint64_t i = first; i < number; ++i) {
      before.push_back(jobs_.program(i));
    }
    const Program whole = jobs_.program(number);
    const auto withBefore = [&](const Program& program) {
      std::vector<Program> all = before;
      all.push_back(program);
      return all;
    };
    const bool alone = differ({whole});
    if (alone) {
      before.clear();
    } else if (!differ(withBefore(whole))) {
      ++leftOut_;  // with more time, or up to a limit, they agree
      return;
    }
    ++differences_;
    std::printf("== DIFFERENCE: %s%s\n", jobs_.name(number).c_str(),
                alone ? "" : (", only after " + jobs_.name(first) + " and on").c_str());
    const Program least = bench::minimised(
        whole, [&](const Program& program) { return differ(withBefore(program)); });
    show(least);
    for (size_t i = 0; i < 2; ++i) {
      const SingleResult result = runUnder(i, withBefore(least));
      std::printf("-- under %s\n%s%s\n", options_.libraries[i].c_str(),
                  bench::printable(result.transcript).c_str(), nameOf(result.end));
    }
    std::fflush(stdout);
  }

  const Options& options_;
  const bench::Jobs& jobs_;
  uint64_t compared_ = 0, leftOut_ = 0, differences_ = 0;
};

void showAll(const Options& options, const bench::Jobs& jobs, uint64_t first, uint64_t last) {
  for (uint64_t number = first; number < last; ++number) {
    const Program program = jobs.program(number);
    std::printf("== %s\n", jobs.name(number).c_str());
    show(program);
    for (const std::string& library : options.libraries) {
      const SingleResult result = bench::runLast(library, {program}, 10);
      std::printf("-- under %s\n%s%s\n", library.c_str(),
                  bench::printable(result.transcript).c_str(), nameOf(result.end));
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  Options options = parse(argc, argv);
  const bench::SeededJobs seeded;
  const bench::FileJobs fromFiles(options.files);
  const bench::Jobs& jobs =
      options.files.empty() ? static_cast<const bench::Jobs&>(seeded) : fromFiles;
  if (!options.files.empty()) {
    options.first = 0;
    options.last = fromFiles.count();
  }
  if (options.show) {
    showAll(options, jobs, options.first, options.last);
    return 0;
  }
  const auto start = std::chrono::steady_clock::now();
  Comparison comparison(options, jobs);
  comparison.run(options.first, options.last);
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  std::printf(
      "%llu programs compared in %.0f s, %llu without end or beyond a limit left out, %llu "
      "differences\n",
      static_cast<unsigned long long>(comparison.compared()), seconds.count(),
      static_cast<unsigned long long>(comparison.leftOut()),
      static_cast<unsigned long long>(comparison.differences()));
  return comparison.differences() == 0 ? 0 : 1;
}
