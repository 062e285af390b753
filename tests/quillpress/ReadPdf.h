// What the tests look at in a PDF file, by a reader that is not the program's own.
#pragma once

#include <string>
#include <vector>

namespace quillpress {

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
