// ContentScan: what a content stream needs of the one who places it in a file.
#pragma once

#include <cstddef>
#include <set>
#include <string>

namespace quillpress {

struct ContentScan {
  size_t restoresWithoutSave = 0;  // Q operators that no q comes before
  size_t savesWithoutRestore = 0;  // q operators that no Q follows
  std::set<std::string> names;     // all names in it, with their solidus
};

// Reads operators and names only; image data in the content are passed over.
ContentScan scanContent(const std::string& content);

// The content with a q in front for each Q too many and a Q behind for each q too many. So a Q
// that has no q gives the state that the content began with, as grestore does in PostScript, and
// nothing of a page whose operators pair is changed.
std::string balanced(const std::string& content, const ContentScan& scan);

}  // namespace quillpress
