// Colour. PostScript has one colour where PDF has two, so each is written twice, for stroking and
// for filling. It is tracked in the model in which it was given, and can be asked for in that model
// only, or as gray.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/painting/Postscript2Pdf.h"

namespace postscript {

// gray setgray -
PAINTING_OPERATOR(SetgrayOperator, "setgray");
// r g b setrgbcolor -
PAINTING_OPERATOR(SetrgbcolorOperator, "setrgbcolor");
// h s b sethsbcolor -
PAINTING_OPERATOR(SethsbcolorOperator, "sethsbcolor");
// c m y k setcmykcolor -
PAINTING_OPERATOR(SetcmykcolorOperator, "setcmykcolor");
// - currentrgbcolor r g b
PAINTING_OPERATOR(CurrentrgbcolorOperator, "currentrgbcolor");
// - currenthsbcolor h s b
PAINTING_OPERATOR(CurrenthsbcolorOperator, "currenthsbcolor");
// - currentcmykcolor c m y k
PAINTING_OPERATOR(CurrentcmykcolorOperator, "currentcmykcolor");
// - currentgray gray
PAINTING_OPERATOR(CurrentgrayOperator, "currentgray");
// any setcolorspace -      (tracks a device space; nothing depends on it)
PAINTING_OPERATOR(SetcolorspaceOperator, "setcolorspace");

void addColorOperators(OperatorRegistry& registry, Postscript2Pdf* converter);

}  // namespace postscript
