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
  // Ends in white space, for the converter leaves a token alone that may still go on.
  std::string_view program;
  std::optional<Box> box;
};

class DscDocument {
 public:
  // Takes the bytes of a file; what surrounds the PostScript in it (the header of a DOS EPS file,
  // commands to a printer, the end-of-transmission bytes of a serial line) is left out.
  // Throws std::invalid_argument when the header points outside of the file.
  explicit DscDocument(std::string file);
  DscDocument(const DscDocument&) = delete;
  DscDocument& operator=(const DscDocument&) = delete;

  // What comes before the first page: definitions and set-up. Empty in a file without page
  // comments, which is one page as a whole.
  std::string_view prolog() const { return prologText; }

  // Never empty. What follows "%%Trailer" behind the last page belongs to none.
  const std::vector<DscPage>& pages() const { return pageList; }

 private:
  std::string bytes;
  std::string_view prologText;
  std::vector<DscPage> pageList;
};

}  // namespace quillpress
