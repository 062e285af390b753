// Fonts. Text paints nothing: a font is a dictionary of which two entries are read, so that a
// program's font prologue succeeds.
#ifndef POSTSCRIPT_LIB_PAINTING_FONTOPERATORS_H
#define POSTSCRIPT_LIB_PAINTING_FONTOPERATORS_H

#include "postscript/lib/Postscript2Pdf.h"

namespace postscript {

// key findfont font      (Helvetica when there is no such font)
PAINTING_OPERATOR(FindfontOperator, "findfont");
// font scale scalefont font      (scales the font itself, on top of earlier scalings)
PAINTING_OPERATOR(ScalefontOperator, "scalefont");
// font setfont -
PAINTING_OPERATOR(SetfontOperator, "setfont");
// - currentfont font
PAINTING_OPERATOR(CurrentfontOperator, "currentfont");
// - FontDirectory dict
PAINTING_OPERATOR(FontDirectoryOperator, "FontDirectory");
// - GlobalFontDirectory dict      (the same dictionary)
PAINTING_OPERATOR(GlobalFontDirectoryOperator, "GlobalFontDirectory");
// string show -
PAINTING_OPERATOR(ShowOperator, "show");
// any stringwidth 10.0 100.0
PAINTING_OPERATOR(StringwidthOperator, "stringwidth");

}  // namespace postscript

#endif
