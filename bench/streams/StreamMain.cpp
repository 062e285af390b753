// Measures what a library keeps of a long job: feeds one converter a stream that is made by a child
// process, in pieces, and says how much memory there was beyond the objects and the piece.
//
//   measure_stream LIBRARY STREAM [MEGABYTES [PIECE]]      one line of figures
//   measure_stream --kinds                                 the streams and what they are
//
// The line: bytes B pages N objects N recorded R beyond M kept K. Recorded is what the objects
// hold. Beyond is the most at a time besides them and the piece, kept is what is left of it when
// the converter is closed; both above what the process had before it was opened.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "bench/library/ConverterLibrary.h"
#include "bench/measure/ProcessCost.h"
#include "bench/streams/Streams.h"

namespace {

constexpr float identity[] = {1, 0, 0, 1, 0, 0};
// The peak is looked at anew after so much input: in between, objects may come that are not yet
// counted as such.
constexpr uint64_t windowBytes = 2'000'000;

[[noreturn]] void fail(const std::string& text) {
  std::fprintf(stderr, "measure_stream: %s\n", text.c_str());
  std::exit(1);
}

// The memory that is in use now.
uint64_t residentMemory() {
  std::ifstream statm("/proc/self/statm");
  uint64_t all = 0, resident = 0;
  statm >> all >> resident;
  return resident * static_cast<uint64_t>(sysconf(_SC_PAGESIZE));
}

void writeAll(int pipe, const void* bytes, size_t size) {
  const char* at = static_cast<const char*>(bytes);
  while (size > 0) {
    const ssize_t written = write(pipe, at, size);
    if (written <= 0) {
      _exit(1);
    }
    at += written;
    size -= static_cast<size_t>(written);
  }
}

bool readAll(int pipe, void* bytes, size_t size) {
  char* at = static_cast<char*>(bytes);
  while (size > 0) {
    const ssize_t count = read(pipe, at, size);
    if (count <= 0) {
      return false;
    }
    at += count;
    size -= static_cast<size_t>(count);
  }
  return true;
}

// Each page behind its length. Returns the end to read from.
int startMaking(const streams::Stream& stream, uint64_t bytes) {
  int ends[2];
  if (pipe(ends) != 0) {
    fail("no pipe");
  }
  const pid_t child = fork();
  if (child < 0) {
    fail("no process for the stream");
  }
  if (child > 0) {
    close(ends[1]);
    return ends[0];
  }
  close(ends[0]);
  for (uint64_t number = 0, made = 0; made < bytes; ++number) {
    const std::string page = stream.page(number);
    const uint64_t length = page.size();
    writeAll(ends[1], &length, sizeof length);
    writeAll(ends[1], page.data(), page.size());
    made += length;
  }
  _exit(0);
}

class Measurement {
 public:
  Measurement(const bench::ConverterLibrary& library, size_t piece)
      : library_(library), piece_(piece) {
    std::memset(piece_.data(), 1, piece);
    before_ = bench::watchPeakMemory();
    converter_ = library.open(identity);
  }

  void page(int pipe, uint64_t length) {
    ++pages_;
    library_.startPage(converter_, identity);
    while (length > 0) {
      const size_t size = std::min(length, static_cast<uint64_t>(piece_.size()));
      if (!readAll(pipe, piece_.data(), size)) {
        fail("the stream ended in a page");
      }
      length -= size;
      convert(static_cast<int32_t>(size));
    }
  }

  void print() {
    endWindow();
    uint64_t count = 0;
    library_.objects(converter_, &count);
    library_.close(converter_);
    const uint64_t now = residentMemory();
    const uint64_t kept = now - std::min(now, before_ + recorded_);
    std::printf("bytes %" PRIu64 " pages %" PRIu64 " objects %" PRIu64 " recorded %" PRIu64
                " beyond %" PRIu64 " kept %" PRIu64 "\n",
                bytes_, pages_, count, recorded_, beyond_, kept);
  }

 private:
  void convert(int32_t size) {
    int32_t length = size;
    if (!library_.convert(converter_, piece_.data(), &length)) {
      fail(library_.error(converter_));
    }
    bytes_ += static_cast<uint64_t>(size);
    if (bytes_ - windowStart_ >= windowBytes) {
      endWindow();
    }
  }

  void endWindow() {
    const uint64_t peak = bench::peakMemory();
    beyond_ = std::max(beyond_, peak - std::min(peak, before_ + recorded_));
    countRecords();
    windowStart_ = bytes_;
    bench::watchPeakMemory();
  }

  // Those that are new, with the texts and bytes that belong to them.
  void countRecords() {
    uint64_t count = 0;
    PdfObject* const* objects = library_.objects(converter_, &count);
    for (; counted_ < count; ++counted_) {
      const PdfObject& object = *objects[counted_];
      recorded_ += object.dataLength + std::strlen(object.dictionary) + std::strlen(object.name);
    }
  }

  const bench::ConverterLibrary& library_;
  std::vector<char> piece_;
  void* converter_ = nullptr;
  uint64_t before_ = 0, beyond_ = 0;
  uint64_t bytes_ = 0, pages_ = 0, windowStart_ = 0;
  uint64_t counted_ = 0, recorded_ = 0;
};

const streams::Stream& streamOf(const std::string& name) {
  for (const streams::Stream& stream : streams::all()) {
    if (name == stream.name) {
      return stream;
    }
  }
  fail("there is no stream " + name);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::string(argv[1]) == "--kinds") {
    for (const streams::Stream& stream : streams::all()) {
      std::printf("%-10s %s\n", stream.name, stream.what);
    }
    return 0;
  }
  if (argc < 3 || argc > 5) {
    std::fprintf(stderr, "usage: measure_stream LIBRARY STREAM [MEGABYTES [PIECE]] | --kinds\n");
    return 2;
  }
  const streams::Stream& stream = streamOf(argv[2]);
  const uint64_t megabytes = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : stream.megabytes;
  const size_t piece = argc > 4 ? std::strtoull(argv[4], nullptr, 10) : 64 * 1024;
  if (megabytes == 0 || piece == 0 || piece > INT32_MAX) {
    fail("megabytes and the piece are numbers of at least 1");
  }
  const int pipe = startMaking(stream, megabytes * 1'000'000);
  const bench::ConverterLibrary library(argv[1]);
  Measurement measurement(library, piece);
  for (uint64_t length = 0; readAll(pipe, &length, sizeof length);) {
    measurement.page(pipe, length);
  }
  int status = 1;
  if (wait(&status) < 0 || status != 0) {
    fail("the stream could not be made");
  }
  measurement.print();
  return 0;
}
