// What programs print. It collects in the interpreter's print buffer, and nobody sees it.
#ifndef POSTSCRIPT_LIB_OUTPUTOPERATORS_H
#define POSTSCRIPT_LIB_OUTPUTOPERATORS_H

#include "postscript/lib/NameObject.h"

namespace postscript {

// any = -
POSTSCRIPT_OPERATOR(PrintValueOperator, "=");
// any == -
POSTSCRIPT_OPERATOR(PrintSyntaxOperator, "==");
// any.. stack any..
POSTSCRIPT_OPERATOR(StackOperator, "stack");

}  // namespace postscript

#endif
