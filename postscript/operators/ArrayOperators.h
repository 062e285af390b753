// The operators that make arrays and take them apart, and those that collect procedures.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// - { -      (tokens are collected from here on)
POSTSCRIPT_OPERATOR(BeginProcedureOperator, "{");
// - } proc      (or into the procedure that encloses it)
POSTSCRIPT_OPERATOR(EndProcedureOperator, "}");
// -mark- any.. ] array
POSTSCRIPT_OPERATOR(EndArrayOperator, "]");
// n array an array of n nulls
POSTSCRIPT_OPERATOR(ArrayOperator, "array");
// any1..anyn n packedarray array
POSTSCRIPT_OPERATOR(PackedarrayOperator, "packedarray");
// boolean setpacking -
POSTSCRIPT_OPERATOR(SetpackingOperator, "setpacking");
// - currentpacking true
POSTSCRIPT_OPERATOR(CurrentpackingOperator, "currentpacking");
// array aload the elements, then array
POSTSCRIPT_OPERATOR(AloadOperator, "aload");
// the elements, then array astore array
POSTSCRIPT_OPERATOR(AstoreOperator, "astore");

void addArrayOperators(OperatorRegistry& registry);

}  // namespace postscript
