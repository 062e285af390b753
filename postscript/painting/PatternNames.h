// PatternNames: by which name the text refers to a pattern of this converter. The key is the
// dictionary's handle, the object itself: a handle that dup has made of it is another. Each handle
// here is counted, so that none can end and leave its address to another dictionary.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "postscript/painting/PdfObjectList.h"
#include "postscript/values/PostscriptObject.h"

namespace postscript {

class PatternNames {
 public:
  explicit PatternNames(const PdfObjectList& list) : list_(list) {}
  PatternNames(const PatternNames&) = delete;
  PatternNames& operator=(const PatternNames&) = delete;
  ~PatternNames() { forgetAll(); }

  // A handle that has a name keeps it: the oldest record counts.
  void add(PostscriptObject* pattern, const PdfObjectList::Place& place);
  // Null if the handle is no pattern's, or the list was emptied since.
  const std::string* nameOf(PostscriptObject* pattern);

 private:
  void forgetAll();

  const PdfObjectList& list_;
  uint64_t clearings_ = 0;  // of the list, when the names were given
  std::unordered_map<PostscriptObject*, std::string> names_;
};

}  // namespace postscript
