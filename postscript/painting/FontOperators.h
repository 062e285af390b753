// Fonts. Text paints nothing: a font is a dictionary of which two entries are read, so that a
// program's font prologue succeeds.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/painting/Postscript2Pdf.h"

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

void addFontOperators(OperatorRegistry& registry, Postscript2Pdf* converter);

}  // namespace postscript
