#include "bench/compare/Jobs.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace bench {

namespace {

using programs::Call;
using programs::Program;

std::string contentOf(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    std::fprintf(stderr, "%s: cannot be read\n", file.c_str());
    std::exit(2);
  }
  return {std::istreambuf_iterator<char>(stream), {}};
}

// Replaces each occurrence of what stands for a byte in a file of test cases.
std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

// Control pictures are E2 90 80 and on, in the order of the control bytes.
std::string withControlBytes(std::string text) {
  for (unsigned char control = 0; control < 32; ++control) {
    const std::string picture = {'\xE2', '\x90', static_cast<char>(0x80 + control)};
    text = replaced(std::move(text), picture, std::string(1, static_cast<char>(control)));
  }
  return text;
}

// Where the expectations of a line of test cases begin; npos if there are none.
size_t keyAt(const std::string& line) {
  size_t first = std::string::npos;
  for (const char* key : {"%pdf", "%stack", "%prints", "%error", "%nothing", "%nocut"}) {
    first = std::min(first, line.find(key));
  }
  return first;
}

Program inPieces(const std::string& text, size_t size) {
  Program program;
  for (size_t at = 0; at < text.size(); at += size) {
    program.push_back({Call::Kind::convert, text.substr(at, size), 0, false});
  }
  return program;
}

}  // namespace

Program SeededJobs::program(uint64_t number) const {
  programs::SeededChoices choices(number);
  return programs::makeProgram(choices);
}

FileJobs::FileJobs(const std::vector<std::string>& files) {
  for (const std::string& file : files) {
    addFile(file);
  }
}

void FileJobs::addFile(const std::string& file) {
  const std::string text = contentOf(file);
  if (text.starts_with("%% ")) {
    addCases(file, text);
    return;
  }
  jobs_.push_back({file, inPieces(text, text.size() + 1)});
  jobs_.push_back({file + " in pieces of 4096 bytes", inPieces(text, 4096)});
  addCuts(file, text, 10, 20);
}

void FileJobs::addCases(const std::string& file, const std::string& text) {
  std::istringstream lines(text);
  std::string line, program;
  for (int number = 1; std::getline(lines, line); ++number) {
    const size_t key = keyAt(line);
    const bool isProgram = !line.empty() && line[0] != '%';
    if (isProgram) {
      program += (program.empty() ? "" : " ") + line.substr(0, key);
    }
    if (!program.empty() && (key != std::string::npos || !isProgram)) {
      addCase(file + ":" + std::to_string(number), withControlBytes(program) + "\n");
      program.clear();
    }
  }
}

void FileJobs::addCase(const std::string& name, const std::string& text) {
  const std::string mark = "‖";
  Program program;
  std::string rest = text;
  for (size_t cut; (cut = rest.find(mark)) != std::string::npos;) {
    program.push_back({Call::Kind::convert, rest.substr(0, cut), 0, false});
    rest.erase(0, cut + mark.size());
  }
  program.push_back({Call::Kind::convert, rest, 0, false});
  jobs_.push_back({name, std::move(program)});
  addCuts(name, text, 5, 2);
}

void FileJobs::addCuts(const std::string& name, const std::string& text, uint32_t times,
                       uint32_t cuts) {
  for (uint32_t i = 0; i < times; ++i) {
    programs::SeededChoices choices(i);
    jobs_.push_back({name + " cut at random, " + std::to_string(i),
                     programs::cutAtRandom(text, cuts, choices)});
  }
}

}  // namespace bench
