// The PostScript that every converter runs when it is made, in this order: the short names by which
// the Windows PostScript driver's output calls the operators, the standard encoding, and a font for
// findfont to fall back to.
#pragma once

namespace postscript {

extern const char* const startupTexts[3];

}  // namespace postscript
