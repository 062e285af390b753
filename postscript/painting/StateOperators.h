// The graphics state's stack. save and restore bracket the text alone: they undo nothing.
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
