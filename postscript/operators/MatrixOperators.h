// Matrices as arrays, without the graphics state.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// - matrix array      (the identity)
POSTSCRIPT_OPERATOR(MatrixOperator, "matrix");
// array identmatrix array      (elements behind the sixth stay)
POSTSCRIPT_OPERATOR(IdentmatrixOperator, "identmatrix");
// m1 m2 destination concatmatrix destination
POSTSCRIPT_OPERATOR(ConcatmatrixOperator, "concatmatrix");

void addMatrixOperators(OperatorRegistry& registry);

}  // namespace postscript
