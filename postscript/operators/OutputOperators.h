// What programs print. It collects in the interpreter's print buffer, and nobody sees it.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// any = -
POSTSCRIPT_OPERATOR(PrintValueOperator, "=");
// any == -
POSTSCRIPT_OPERATOR(PrintSyntaxOperator, "==");
// any.. stack any..
POSTSCRIPT_OPERATOR(StackOperator, "stack");

void addOutputOperators(OperatorRegistry& registry);

}  // namespace postscript
