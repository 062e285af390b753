// System: what the program asks of the operating system, and the only module that knows which one
// it is. SystemPosix.cpp and SystemWindows.cpp implement it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillpress {

// What was wrong with which file, and what to do about it.
class FileFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Throws a FileFailure with the system's words for the error and advice. `what` is "cannot read" or
// "cannot write".
[[noreturn]] void failFile(const char* what, const std::string& path, int error);

// A file's bytes, or those of standard input for "-". A plain file is mapped into memory where the
// system can do that, so that its size does not count as memory of the program.
class FileBytes {
 public:
  // Throws FileFailure.
  explicit FileBytes(const std::string& path);
  FileBytes(const FileBytes&) = delete;
  FileBytes& operator=(const FileBytes&) = delete;
  ~FileBytes();

  std::string_view view() const { return bytes_; }

 private:
  std::string_view bytes_;
  std::string read_;        // when the bytes were read
  void* mapped_ = nullptr;  // when they are mapped
};

// Where output goes in pieces: a file, or standard output for "-". A plain file is written beside
// its place and takes it only by commit(), so that there is never half a file, whatever ends the
// program; what is no plain file (a device, a pipe) is written to. All throw FileFailure.
class OutputFile {
 public:
  explicit OutputFile(const std::string& path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  void write(std::string_view bytes);
  void commit();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// Bytes that wait outside of memory. The file has no name, or loses it with the program, however
// that ends. All throw FileFailure.
class ScratchFile {
 public:
  ScratchFile();
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;
  ~ScratchFile();

  // The place of the bytes, for read().
  uint64_t append(std::string_view bytes);
  void read(uint64_t place, size_t length, const std::function<void(std::string_view)>& take);

 private:
  struct State;
  std::unique_ptr<State> state_;
  uint64_t length_ = 0;
};

// Has a signal that ends the program remove the output that is being written, and a closed pipe or
// a full disk be reported as failures of a write.
void prepareSignals();

bool isSameFile(const std::string& path, const std::string& other);
bool standardOutputIsTerminal();
bool standardErrorIsTerminal();

// Processor time of the calling thread.
double threadSeconds();
// Time that passes, from any beginning.
double wallSeconds();
// What the program holds in memory, mapped files aside; 0 where the system does not say.
uint64_t memoryInUse();

}  // namespace quillpress
