// Only the null handle means that no file is open. invalidFile is a handle like any other here:
// writing to it fails, and it is closed.
#include "umpd/OutFile.h"

namespace umpd {

OutFile::~OutFile() {
  close();
}

bool OutFile::open(const std::u16string& path, bool append) {
  // A handle that is replaced could never be closed.
  close();
  handle =
      files_.openForWriting(path, append ? Disposition::openAlways : Disposition::createAlways);
  if (handle == invalidFile) {
    return false;
  }
  if (append) {
    files_.seekToEnd(handle);
  }
  return true;
}

// A disk that is full takes a part of the bytes, which counts as a failure.
bool OutFile::write(std::span<const std::byte> data) {
  const auto length = static_cast<uint32_t>(data.size());
  if (handle == FileHandle{} || data.data() == nullptr || length == 0) {
    return false;
  }
  uint32_t written = 0;
  files_.write(handle, data.first(length), written);
  return written == length;
}

void OutFile::close() {
  if (handle != FileHandle{}) {
    files_.close(handle);
  }
  handle = {};
}

}  // namespace umpd
