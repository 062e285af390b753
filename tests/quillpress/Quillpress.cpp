#include "tests/quillpress/Quillpress.h"

#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace quillpress {

QuillpressTest::QuillpressTest() {
  std::string name = testing::TempDir() + "quillpress-XXXXXX";
  folder = ::mkdtemp(name.data()) == nullptr ? "" : name;
  EXPECT_NE(folder, "");
}

QuillpressTest::~QuillpressTest() {
  std::filesystem::remove_all(folder);
}

void QuillpressTest::write(const std::string& name, const std::string& bytes) const {
  std::ofstream(pathOf(name), std::ios::binary) << bytes;
}

std::string QuillpressTest::read(const std::string& name) const {
  std::ostringstream bytes;
  bytes << std::ifstream(pathOf(name), std::ios::binary).rdbuf();
  return bytes.str();
}

std::vector<std::string> QuillpressTest::files() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

Outcome QuillpressTest::shell(const std::string& line) const {
  const std::string command = "cd '" + folder + "' && Q='" QUILLPRESS_PROGRAM "' && { " + line +
                              "; } 2>&1 >stdout </dev/null";
  FILE* pipe = ::popen(command.c_str(), "r");
  std::string errors;
  for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe)) {
    errors += static_cast<char>(byte);
  }
  const int status = ::pclose(pipe);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, errors};
}

std::string QuillpressTest::contentOf(const std::string& postScript) const {
  write("content.ps", postScript);
  EXPECT_EQ(shell("$Q convert --content content.ps content.txt").status, 0);
  return read("content.txt");
}

}  // namespace quillpress
