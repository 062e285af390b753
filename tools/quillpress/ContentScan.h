// ContentScan: one look over a content stream for all that its place in a file and the report need.
// It reads the operators that this converter writes, and follows the matrix to know where paint
// falls; clips are not followed.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "tools/quillpress/Geometry.h"

namespace quillpress {

// What a content stream paints.
struct Marks {
  size_t paths = 0;
  size_t images = 0;
  size_t masks = 0;
  size_t patterns = 0;   // uses of a pattern as colour, which paints nothing by itself
  size_t outside = 0;    // of the others, those that lie wholly outside of the page
  size_t lostPaths = 0;  // strokes and fills whose path was painted between gsave and grestore
  std::optional<Box> extent;

  size_t total() const { return paths + images + masks; }
};

struct ContentScan {
  size_t restoresWithoutSave = 0;  // Q operators that no q comes before
  size_t savesWithoutRestore = 0;  // q operators that no Q follows
  std::set<std::string> names;     // of objects, with their solidus
  Marks marks;
};

// page: the page's box, for what lies outside. matrix: what the content's coordinates go through
// before they are the page's.
ContentScan scanContent(std::string_view content, const Box& page, const Matrix& matrix = identity);

// Puts a q in front for each Q too many and a Q behind for each q too many. So a Q that has no q
// gives the state that the content began with, as grestore does in PostScript, and nothing of a
// page whose operators pair is changed.
void balance(std::string& content, const ContentScan& scan);

}  // namespace quillpress
