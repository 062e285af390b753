#include "umpd/OutFile.h"

OutFile::~OutFile() {
  close();
}

bool OutFile::open(const std::u16string& path, bool append) {
  close();
  handle = files.openForWriting(path, append ? Disposition::openAlways : Disposition::createAlways);
  if (handle == invalidFile) return false;
  if (append) files.seekToEnd(handle);
  return true;
}

bool OutFile::write(std::span<const std::byte> data) {
  const auto length = static_cast<std::uint32_t>(data.size());
  if (handle == FileHandle{} || data.data() == nullptr || length == 0) return false;
  std::uint32_t written = 0;
  files.write(handle, data.first(length), written);
  return written == length;
}

void OutFile::close() {
  if (handle != FileHandle{}) files.close(handle);
  handle = {};
}
