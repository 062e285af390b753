// Runs a fuzz target over the files of the folders that are named, without a fuzzer: what once
// failed is tried again by every test run.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const auto& file : files) {
      std::ifstream stream(file, std::ios::binary);
      const std::vector<char> bytes((std::istreambuf_iterator<char>(stream)), {});
      // A crash is to show which file it was.
      std::printf("%s\n", file.filename().string().c_str());
      std::fflush(stdout);
      LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
      ++count;
    }
  }
  std::printf("%d seeds replayed\n", count);
  return count > 0 ? 0 : 1;
}
