// Matrix: a coordinate system, six numbers a b c d e f in PostScript's order. The point (x, y) goes
// to (ax + cy + e, bx + dy + f).
#pragma once

#include "postscript/values/ArrayObject.h"

namespace postscript {

struct Matrix {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;
};

// m applied first, then n.
Matrix multiplyMatrix(const Matrix& m, const Matrix& n);
// A singular matrix gives infinities.
Matrix invertMatrix(const Matrix& m);
// The first six elements, read from the last to the first. Fails when one is missing or no number.
Matrix matrixFromArray(const ArrayObject& array);
// Empties the array and gives it six new reals.
void matrixIntoArray(const ArrayObject& array, const Matrix& matrix);

}  // namespace postscript
