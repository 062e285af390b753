// Matrices as arrays, without the graphics state.
#ifndef POSTSCRIPT_LIB_MATRIXOPERATORS_H
#define POSTSCRIPT_LIB_MATRIXOPERATORS_H

#include "postscript/lib/NameObject.h"

namespace postscript {

// - matrix array      (the identity)
POSTSCRIPT_OPERATOR(MatrixOperator, "matrix");
// array identmatrix array      (elements behind the sixth stay)
POSTSCRIPT_OPERATOR(IdentmatrixOperator, "identmatrix");
// m1 m2 destination concatmatrix destination
POSTSCRIPT_OPERATOR(ConcatmatrixOperator, "concatmatrix");

}  // namespace postscript

#endif
