// Files: reading the input whole, and writing the output whole or not at all.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace quillpress {

// What was wrong with which file, and what to do about it.
class FileFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The bytes of a file, or of standard input for "-". Throws FileFailure.
std::string readFile(const std::string& path);

// Writes a file, or standard output for "-". A file is written beside its place and then renamed,
// so that there is never a half-written one; what is no plain file (a device, a pipe) is written
// to. Throws FileFailure.
void writeFile(const std::string& path, std::string_view bytes);

// Whether both are one file, by whatever names.
bool isSameFile(const std::string& path, const std::string& other);

}  // namespace quillpress
