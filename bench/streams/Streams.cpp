#include "bench/streams/Streams.h"

#include "bench/workloads/Workloads.h"

namespace streams {

namespace {

std::string workloadPage(const char* kind, size_t size, uint64_t number) {
  return workloads::makeWorkload(kind, size, number).text;
}

// Paths, text, strings, and a save around some of it: 24 KB.
std::string typicalPage(uint64_t number) {
  return workloadPage("vector", 12000, number) + workloadPage("unpainted", 6000, number) +
         workloadPage("strings", 3000, number) + workloadPage("saves", 3000, number);
}

std::string rawImagePage(uint64_t number) {
  return workloadPage("imgraw", 500000, number);
}

// Besides short strings some that are cut by many pieces, literal, with escapes, and hexadecimal.
std::string stringPage(uint64_t number) {
  const std::string digits = std::to_string(number);
  std::string text = workloadPage("strings", 200000, number) + "/kept (" + digits;
  text.append(200000, 'x') += ") def (\\101" + digits;
  text.append(50000, 'y') += ") length pop <";
  text.append(50000, '4') += "> pop /kept kept 10 1000 getinterval def\n";
  return text;
}

std::string smallImagePage(uint64_t number) {
  return workloadPage("imgsmall", 500000, number);
}

// Procedures of each page take the place of those before, run once, or are dropped.
std::string procedurePage(uint64_t number) {
  std::string text;
  for (uint64_t i = 0; i < 5000; ++i) {
    const std::string name = "p" + std::to_string(i % 500);
    const std::string digits = std::to_string(number * 5000 + i);
    text.append("/").append(name).append(" {gsave 1 ").append(digits);
    text.append(" {dup (text) length add {").append(digits).append(" pop} exec} exec 2 eq ");
    text.append("{/x 1 def}{pop} ifelse grestore} bind def\n{").append(name);
    text.append(" [1 ").append(digits).append(" /name]} pop\n");
  }
  for (uint64_t i = 0; i < 500; ++i) {
    text.append("7 p").append(std::to_string(i)).append(" clear\n");
  }
  return text;
}

}  // namespace

const std::vector<Stream>& all() {
  static const std::vector<Stream> streams = {
      {"pages", "typical pages, ten thousand of them", 240, typicalPage},
      {"imgraw", "large images as bytes, each of them new", 500, rawImagePage},
      {"strings", "strings, names and comments", 500, stringPage},
      {"procs", "procedures, some of which run", 500, procedurePage},
      {"imgsmall", "small images and masks", 500, smallImagePage},
  };
  return streams;
}

}  // namespace streams
