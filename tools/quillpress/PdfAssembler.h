// PdfAssembler: makes a PDF file of pages of content text and of the records that it refers to.
#pragma once

#include <tqpumpd2k.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "tools/quillpress/Geometry.h"

namespace quillpress {

struct PdfPage {
  std::string content;
  Box mediaBox;
};

// Is told which page, counted from 0, uses the name of a record that can't be placed in a file.
using ReportMissing = std::function<void(size_t page, const std::string& name)>;

// Gives the file's bytes, the same for the same pages. A record is in the file once, however many
// pages name it, and not at all when none does.
//   records: in the order in which they were made, for one may name older ones only.
//   pageMatrix: what the program took for its default coordinate system.
std::string assemblePdf(const std::vector<PdfPage>& pages,
                        const std::vector<const PdfObject*>& records, const Matrix& pageMatrix,
                        const ReportMissing& reportMissing);

}  // namespace quillpress
