// DscDocument: a PostScript file taken apart at its structuring comments, the lines that begin
// with "%%". The converter knows nothing of pages: what is a page, and how large, stands only here.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/quillpress/Geometry.h"

namespace quillpress {

struct DscPage {
  std::string_view program;
  std::string label;       // as its comment has it; empty without one
  std::optional<Box> box;  // of the paper or what the file calls its bounds
  int rotation = 0;        // clockwise degrees for reading: 0, 90, 180 or 270
};

// What the header says of the document, without the parentheses of a PostScript string.
struct DscInfo {
  std::string title;
  std::string author;
  std::string creator;
  std::string subject;
};

class DscDocument {
 public:
  // The bytes of a file, which must stay as long as this; what surrounds the PostScript in it (the
  // header of a DOS EPS file, commands to a printer, the end-of-transmission bytes of a serial
  // line) is left out. Throws std::invalid_argument when the header points outside of the file.
  explicit DscDocument(std::string_view file);

  // The PostScript as a whole.
  std::string_view text() const { return text_; }
  // What comes before the first page: definitions and set-up. Empty in a file without page
  // comments, which is one piece.
  std::string_view prolog() const { return prolog_; }
  // Never empty. What follows "%%Trailer" after the last page belongs to none.
  const std::vector<DscPage>& pages() const { return pages_; }
  // Whether page comments divide the file.
  bool hasPageComments() const { return hasPageComments_; }
  const DscInfo& info() const { return info_; }

 private:
  std::string_view text_;
  std::string_view prolog_;
  std::vector<DscPage> pages_;
  bool hasPageComments_ = false;
  DscInfo info_;
};

}  // namespace quillpress
