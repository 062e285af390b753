// ContentWriter: how numbers, matrices and clips become PDF text.
#ifndef POSTSCRIPT_LIB_CONTENTWRITER_H
#define POSTSCRIPT_LIB_CONTENTWRITER_H

#include <string>
#include <string_view>

#include "postscript/lib/Matrix.h"

namespace postscript {

// Appends a number with the fewer decimals the larger it is, without trailing zeros.
void formatNumber(std::string& text, double value);

// Appends the six numbers, each with a blank behind it, the word and a line feed; nothing for a
// matrix that flattens everything to a point.
void formatMatrix(std::string& text, const Matrix& matrix, std::string_view word);

// Puts a clipping operator into the text. PDF wants it directly behind the path's construction,
// while programs write gsave in between: when a "q" stands behind the last segment, the operator
// goes in front of it; else to the end.
void insertClip(std::string& content, std::string_view clip);

}  // namespace postscript

#endif
