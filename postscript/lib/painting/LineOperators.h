// Line style. Only the width is tracked.
#ifndef POSTSCRIPT_LIB_PAINTING_LINEOPERATORS_H
#define POSTSCRIPT_LIB_PAINTING_LINEOPERATORS_H

#include "postscript/lib/Postscript2Pdf.h"

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

}  // namespace postscript

#endif
