// OutFile: a file to write. A file that could not be opened leaves invalidFile in `handle`, which
// is not "no file": a job goes on to its write with it, and that fails.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "umpd/platform/Platform.h"

namespace umpd {

class OutFile {
 public:
  explicit OutFile(Files& files) : files_(files) {}
  virtual ~OutFile();
  OutFile(const OutFile&) = delete;
  OutFile& operator=(const OutFile&) = delete;

  bool open(const std::u16string& path, bool append);
  // True if all bytes were written. No bytes are a failure.
  bool write(std::span<const std::byte> data);
  void close();

  FileHandle handle{};

 private:
  Files& files_;
};

}  // namespace umpd
