// Job: the pages of a document, each converted on its own.
#pragma once

#include <tqpumpd2k.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/quillpress/Converter.h"
#include "tools/quillpress/DscDocument.h"
#include "tools/quillpress/Geometry.h"

namespace quillpress {

struct ConvertedPage {
  size_t number;  // counted from 1 over the document's pages
  std::string content;
  std::optional<Box> box;
};

class Job {
 public:
  // Is told what failed, such as "page 3", and why.
  using Report = std::function<void(const std::string& where, const std::string& why)>;

  Job(const DscDocument& document, const Matrix& pageMatrix, Report report);

  // The pages that could be converted.
  std::vector<ConvertedPage> convertPages();

  // The records that the pages' text refers to.
  std::vector<const PdfObject*> objects() const { return converter->objects(); }

 private:
  void open();
  std::optional<std::string> convertPage(size_t number, const DscPage& page);

  const DscDocument& document;
  Matrix pageMatrix;
  Report report;
  std::optional<Converter> converter;
  bool prologReported = false;
};

}  // namespace quillpress
