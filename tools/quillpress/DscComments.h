// DscComments: the structuring comments of a PostScript text, one after the other. Only those of
// the document itself: what is embedded in it, other documents and raw data, is passed over.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace quillpress {

struct DscComment {
  size_t offset;             // where its line begins
  std::string_view keyword;  // such as "Page:" or "Trailer"; a colon belongs to it
  std::string_view value;    // what follows on the line, without blanks around it
};

class DscComments {
 public:
  explicit DscComments(std::string_view text) : text_(text) {}

  // The next comment, none at the end of the text.
  std::optional<DscComment> next();

 private:
  bool findComment();
  std::string_view takeLine();
  void skipData(std::string_view extent);

  std::string_view text_;
  size_t position_ = 0;  // always where a line begins
  size_t documentDepth_ = 0;
  bool moreClosings_ = true;  // until a search for the end of data found none up to the text's end
};

}  // namespace quillpress
