// Converter: one converter of the engine with the watch on it, open as long as this lives.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "include/tqpumpd2k.h"
#include "postscript/painting/Postscript2Pdf.h"
#include "tools/quillpress/Geometry.h"
#include "tools/quillpress/Watch.h"

namespace quillpress {

class Converter {
 public:
  Converter(const Matrix& matrix, Watch& watch);

  void startPage();

  // Runs a piece, whose text follows that of the pieces before it. `start` is its place in the
  // program. False if it failed; the watch then knows why.
  bool run(std::string_view piece, size_t start);

  // The text since the page's start.
  std::string_view content() const { return engine_->contentText.text(); }
  // The same to keep; `room` is a string whose memory the next page's text may take.
  std::string takeContent(std::string room);

  // Whether a further piece would not be run but taken for the rest of what came before: of a
  // string or procedure that was not closed, or of data that an operator is still waiting for.
  // Drops the text.
  bool isUnfinished();

 private:
  bool writesForProbe();

  Watch& watch_;
  std::array<float, 6> pageMatrix_;
  std::unique_ptr<postscript::Postscript2Pdf> engine_;
};

// All records of images and patterns that were made in this process, in memory for as long as this.
class ObjectRecords {
 public:
  ObjectRecords();
  const std::vector<const PdfObject*>& list() const { return list_; }

 private:
  postscript::HandedOutPdfObjects held_;
  std::vector<const PdfObject*> list_;
};

void clearPdfObjects();

}  // namespace quillpress
