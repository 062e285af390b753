// ClipPlace: where in a content text a clipping operator goes. PDF wants one directly after the
// path's construction, while programs write gsave in between. So a clip looks back for the last
// segment operator, a token of its own of one letter; when a "q" comes after it, the clip goes in
// front of that "q". Text is text: letters in the data of an image count as well.
//
// The text is not walked back from each clip but read forward, once: what is known of the part that
// was read is the last segment and the first "q" after it.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace postscript {

class ClipPlace {
 public:
  // The place of a clip that is written now; none if it goes to the text's end. The text may have
  // grown since it was last asked about, and is otherwise the same.
  std::optional<size_t> in(std::string_view text);
  // Reads on, without a question.
  void read(std::string_view text);
  // Only so many bytes of the text are as they were.
  void keep(size_t length);

 private:
  void readByte(std::string_view text);
  void readBlock(std::string_view text, size_t start);
  void note(size_t index, char letter);

  size_t readLength_ = 0;  // the tokens that begin below this are known
  size_t segmentEnd_ = 0;  // after the last segment's letter and the byte that ends it; 0: none
  size_t qEnd_ = 0;        // likewise, of the first "q" after that
};

}  // namespace postscript
