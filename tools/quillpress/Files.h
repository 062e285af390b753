// Files: input as bytes, output that appears whole or not at all, and bytes that wait outside of
// memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillpress {

// What was wrong with which file, and what to do about it.
class FileFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A descriptor that closes itself; the standard streams' ones stay open.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(); }
  int get() const { return number_; }
  bool close();

 private:
  int number_;
};

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
  std::string read_;              // when the bytes were read
  const void* mapped_ = nullptr;  // when they are mapped
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
  int open(const std::string& path);

  std::string shownName_;
  std::filesystem::path place_;   // what the file beside replaces; empty when written to directly
  std::filesystem::path beside_;  // that file
  Descriptor file_;
};

// Bytes that wait outside of memory, in a file without a name. All throw FileFailure.
class ScratchFile {
 public:
  ScratchFile();

  // Returns the place of the bytes, for read().
  uint64_t append(std::string_view bytes);
  void read(uint64_t place, size_t length, const std::function<void(std::string_view)>& take);

 private:
  Descriptor file_;
  uint64_t length_ = 0;
};

// Whether both are one file, by whatever names.
bool isSameFile(const std::string& path, const std::string& other);

bool standardOutputIsTerminal();
bool standardErrorIsTerminal();

}  // namespace quillpress
