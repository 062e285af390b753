// Progress: a line on a terminal that tells how far a long conversion is.
#pragma once

#include <cstddef>
#include <string>

namespace quillpress {

class Progress {
 public:
  // Without a terminal, or when it is not wanted, nothing is ever shown.
  Progress(std::string name, size_t pages, size_t bytes, bool wanted);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { clear(); }

  // So many bytes of the program have been run. Cheap.
  void advance(size_t offset);
  void pageDone() { ++done_; }
  void clear();

 private:
  std::string name_;
  size_t pages_;
  size_t bytes_;
  bool wanted_;
  bool shown_ = false;
  size_t done_ = 0;
  double started_;
  double last_;
};

}  // namespace quillpress
