// Line style. Only the width is tracked.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/painting/Postscript2Pdf.h"

namespace postscript {

// width setlinewidth -
PAINTING_OPERATOR(SetlinewidthOperator, "setlinewidth");
// - currentlinewidth width
PAINTING_OPERATOR(CurrentlinewidthOperator, "currentlinewidth");
// integer setlinecap -
PAINTING_OPERATOR(SetlinecapOperator, "setlinecap");
// integer setlinejoin -
PAINTING_OPERATOR(SetlinejoinOperator, "setlinejoin");
// limit setmiterlimit -
PAINTING_OPERATOR(SetmiterlimitOperator, "setmiterlimit");
// array offset setdash -
PAINTING_OPERATOR(SetdashOperator, "setdash");

void addLineOperators(OperatorRegistry& registry, Postscript2Pdf* converter);

}  // namespace postscript
