// Quillpress: the built program as a user has it, in a folder of its own that goes with the test.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillpress {

struct Outcome {
  int status;
  std::string errors;  // what it said on standard error
};

class QuillpressTest : public testing::Test {
 protected:
  QuillpressTest();
  ~QuillpressTest() override;

  std::string pathOf(const std::string& name) const { return folder + "/" + name; }
  void write(const std::string& name, const std::string& bytes) const;
  std::string read(const std::string& name) const;
  std::vector<std::string> files() const;

  // Runs a line of shell in the folder; $Q is the program.
  Outcome shell(const std::string& line) const;

  // What `convert --content` gives for a program.
  std::string contentOf(const std::string& postScript) const;

 private:
  std::string folder;
};

struct PdfResource {
  std::string category;    // such as "/XObject"
  std::string name;        // such as "/PSI1"
  int object;              // its number in the file
  std::string dictionary;  // as PDF text
  std::string data;        // decoded when the file's own compression is all there is, else raw
};

struct PdfPageView {
  std::vector<double> mediaBox;
  std::string content;
  std::vector<PdfResource> resources;
};

// Opens a PDF file, which fails the test when the file is damaged.
std::vector<PdfPageView> readPdf(const std::string& path);

}  // namespace quillpress
