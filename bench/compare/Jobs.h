// Jobs: the numbered programs of a comparison. They are made again from their number alone, so that
// nothing need be kept of those that agree.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/programs/Program.h"

namespace bench {

class Jobs {
 public:
  virtual ~Jobs() = default;
  virtual programs::Program program(uint64_t number) const = 0;
  virtual std::string name(uint64_t number) const = 0;
};

// A random program for each seed.
class SeededJobs : public Jobs {
 public:
  programs::Program program(uint64_t number) const override;
  std::string name(uint64_t number) const override { return "seed " + std::to_string(number); }
};

// Files: each whole, cut at random, and in pieces of 4 KB; of a file of test cases (which
// begins with "%% ") each row whole and cut.
class FileJobs : public Jobs {
 public:
  explicit FileJobs(const std::vector<std::string>& files);
  programs::Program program(uint64_t number) const override { return jobs_[number].program; }
  std::string name(uint64_t number) const override { return jobs_[number].name; }
  uint64_t count() const { return jobs_.size(); }

 private:
  struct Job {
    std::string name;
    programs::Program program;
  };

  void addFile(const std::string& file);
  void addCases(const std::string& file, const std::string& text);
  void addCase(const std::string& name, const std::string& text);
  void addCuts(const std::string& name, const std::string& text, uint32_t times, uint32_t cuts);

  std::vector<Job> jobs_;
};

}  // namespace bench
