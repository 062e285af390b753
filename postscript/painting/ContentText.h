// ContentText: the text that a run writes. It grows at its end, with one exception: clipping
// operators go in front of text that is there already (see ClipPlace). Those are kept in a list,
// and put into the text all at once when somebody reads it: each byte moves once, however many
// clips there are.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "postscript/painting/ClipPlace.h"
#include "postscript/painting/TextBuffer.h"
#include "postscript/values/Text.h"

namespace postscript {

class ContentText {
 public:
  explicit ContentText(Budget* budget) : bytes_(budget), insertionsShare_(budget) {}

  size_t size() const { return bytes_.size() + insertedLength_; }
  // All of it, with a NUL byte after its end; valid until something is written.
  std::string_view text();

  // For writers, as of TextBuffer.
  char* room(size_t bytes) { return bytes_.room(bytes); }
  void endAt(const char* end) { bytes_.endAt(end); }
  void append(std::string_view text) { bytes_.append(text); }
  // clip: a literal.
  void insertClip(std::string_view clip);

  void clear();
  // Marks the end of the text: a part begins here that will be taken off. Returns the length.
  size_t beginPart();
  // Removes and returns everything from the start on, which is at most the length.
  Text takePart(size_t start);

 private:
  struct Insertion {
    size_t place;  // in `bytes_`
    std::string_view clip;
  };

  std::string_view written() const { return {bytes_.data(), bytes_.size()}; }
  size_t groupBegin(size_t end) const;
  void mergeFrom(size_t first);

  TextBuffer bytes_;                   // without the insertions
  std::vector<Insertion> insertions_;  // by place; at the same place a later one goes first
  BudgetShare insertionsShare_;
  size_t insertedLength_ = 0;
  ClipPlace clipPlace_;
  ClipPlace placeAtPart_;  // as it was when the part began
};

}  // namespace postscript
