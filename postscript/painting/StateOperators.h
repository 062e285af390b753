// The stack of graphics states. save and restore only put brackets around the text; the tracked
// state and the interpreter's memory stay as they are.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/painting/Postscript2Pdf.h"

namespace postscript {

// - gsave -
PAINTING_OPERATOR(GsaveOperator, "gsave");
// - grestore -
PAINTING_OPERATOR(GrestoreOperator, "grestore");
// - save save
PAINTING_OPERATOR(SaveOperator, "save");
// any restore -
PAINTING_OPERATOR(RestoreOperator, "restore");

void addStateOperators(OperatorRegistry& registry, Postscript2Pdf* converter);

}  // namespace postscript
