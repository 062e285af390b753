// ContentWriter: how numbers, matrices and clips become PDF text.
#pragma once

#include <string>
#include <string_view>

#include "postscript/values/Matrix.h"

namespace postscript {

// Appends a number with the fewer decimals the larger it is, without trailing zeros.
void formatNumber(std::string& text, double value);

// Appends the six numbers, each with a blank behind it, the word and a line feed; nothing for a
// matrix that flattens everything to a point.
void formatMatrix(std::string& text, const Matrix& matrix, std::string_view word);

// Puts clipping operators into the text. PDF wants one directly behind the path's construction,
// while programs write gsave in between: when a "q" stands behind the last segment, the operator
// goes in front of it; else to the end. A text is read once, however many clips it gets.
class ClipWriter {
 public:
  void insert(std::string& content, std::string_view clip);
  // To be told when the text does not merely grow.
  void textWasCut() { *this = {}; }

 private:
  void read(std::string_view content);

  size_t readLength = 0;    // how much of the text has been read
  size_t segmentPlace = 0;  // behind the last segment in it; 0 when there is none
  bool sawQ = false;        // behind that segment
};

}  // namespace postscript
