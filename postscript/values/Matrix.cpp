#include "postscript/values/Matrix.h"

#include "postscript/values/NumberUtils.h"
#include "postscript/values/RealObject.h"

namespace postscript {

Matrix multiplyMatrix(const Matrix& m, const Matrix& n) {
  return {m.a * n.a + m.b * n.c, m.a * n.b + m.b * n.d,       m.c * n.a + m.d * n.c,
          m.c * n.b + m.d * n.d, m.e * n.a + m.f * n.c + n.e, m.e * n.b + m.f * n.d + n.f};
}

Matrix invertMatrix(const Matrix& m) {
  const double det = m.a * m.d - m.b * m.c;
  return {m.d / det,
          -m.b / det,
          -m.c / det,
          m.a / det,
          (m.c * m.f - m.d * m.e) / det,
          (m.b * m.e - m.a * m.f) / det};
}

Matrix matrixFromArray(const ArrayObject& array) {
  const auto number = [&array](int32_t index) { return numberValue(*array.element(index)); };
  Matrix matrix;
  matrix.f = number(5);
  matrix.e = number(4);
  matrix.d = number(3);
  matrix.c = number(2);
  matrix.b = number(1);
  matrix.a = number(0);
  return matrix;
}

void matrixIntoArray(const ArrayObject& array, const Matrix& matrix) {
  array.items().clear();
  for (const double number : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
    array.items().pushNew<RealObject>(number);
  }
}

}  // namespace postscript
