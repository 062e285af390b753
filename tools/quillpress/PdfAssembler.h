// PdfAssembler: makes a PDF file of pages whose streams are ready, and of the records that they
// refer to. The streams go from the store to the file one at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "include/tqpumpd2k.h"
#include "tools/quillpress/Geometry.h"
#include "tools/quillpress/PageStore.h"

namespace quillpress {

struct PdfPage {
  StoredStream content;         // compressed
  std::set<std::string> names;  // of the records that it uses
  Box mediaBox;
  int rotation;
};

// Texts in UTF-8; empty ones are left out.
struct PdfInfo {
  std::string title;
  std::string author;
  std::string creator;
  std::string subject;
  std::string producer;
  std::string date;  // as PDF has it: "D:20260102030405Z"
};

struct PdfDocument {
  std::vector<PdfPage> pages;
  // In the order in which they were made, for one may name older ones only.
  std::vector<const PdfObject*> records;
  // What the program took for its default coordinate system.
  Matrix pageMatrix = identity;
  PdfInfo info;
};

// Is told which page, counted from 0, uses the name of a record that can't be placed in a file.
using ReportMissing = std::function<void(size_t page, const std::string& name)>;
using WriteBytes = std::function<void(std::string_view bytes)>;

class PdfAssembler {
 public:
  // Puts the file together. The store must stay as long as this.
  PdfAssembler(const PdfDocument& document, PageStore& store, const ReportMissing& reportMissing);
  PdfAssembler(const PdfAssembler&) = delete;
  PdfAssembler& operator=(const PdfAssembler&) = delete;
  ~PdfAssembler();

  // Writes the file's bytes, the same for the same document. A record is in the file once, however
  // many pages name it, and not at all when none does.
  void write(const WriteBytes& write);

 private:
  struct File;
  std::unique_ptr<File> file_;
};

}  // namespace quillpress
