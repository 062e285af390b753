// translate, scale and rotate make a matrix of their numbers and either apply it (tracked and
// written) or store it in an array that lies on top. The transformations take their matrix from an
// array on top, or the current one.
#include "postscript/painting/CoordinateOperators.h"

#include "postscript/engine/Operands.h"
#include "postscript/values/Trigonometry.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "Postscript2Pdf";

void concatenate(Postscript2Pdf& converter, const Matrix& step) {
  Matrix& matrix = converter.topState().matrix;
  matrix = multiplyMatrix(step, matrix);
  converter.writeMatrix(step);
}

// For an operator of one number, and below of two. matrixOf makes the change from them.
template <class MatrixOf>
void changeByOne(Interpreter& ps, Postscript2Pdf& converter, MatrixOf matrixOf) {
  const Held<> top = popObject(ps);
  if (auto* array = as<ArrayObject>(top.get())) {
    matrixIntoArray(*array, matrixOf(popNumber(ps)));
    ps.operandStack.pushChecked(array);
  } else {
    concatenate(converter, matrixOf(numberValue(*top)));
  }
}

template <class MatrixOf>
void changeByTwo(Interpreter& ps, Postscript2Pdf& converter, MatrixOf matrixOf) {
  const Held<> top = popObject(ps);
  auto* array = as<ArrayObject>(top.get());
  const Held<> second = array ? popObject(ps) : ps.hold(top.get());
  const Held<> first = popObject(ps);
  const double x = numberValue(*first);
  const Matrix change = matrixOf(x, numberValue(*second));
  if (array) {
    matrixIntoArray(*array, change);
    ps.operandStack.pushChecked(array);
  } else {
    concatenate(converter, change);
  }
}

// What a transformation pops: an array or the current matrix, and a point.
struct TransformOperands {
  TransformOperands(Interpreter& ps, const Matrix& current) {
    const Held<> top = popObject(ps);
    const auto* array = as<ArrayObject>(top.get());
    fromArray = array != nullptr;
    matrix = array ? matrixFromArray(*array) : current;
    const Held<> second = array ? popObject(ps) : ps.hold(top.get());
    const Held<> first = popObject(ps);
    x = numberValue(*first);
    y = numberValue(*second);
  }

  bool fromArray;
  Matrix matrix;
  double x;
  double y;
};

void pushTransformed(Interpreter& ps, const Matrix& m, double x, double y, bool delta) {
  const double newX = m.c * y + m.a * x;
  const double newY = m.d * y + m.b * x;
  pushReal(ps, delta ? newX : newX + m.e);
  pushReal(ps, delta ? newY : newY + m.f);
}

}  // namespace

void TranslateOperator::execute(Interpreter& ps) {
  changeByTwo(ps, *converter, [](double tx, double ty) { return Matrix{1, 0, 0, 1, tx, ty}; });
}

void ScaleOperator::execute(Interpreter& ps) {
  changeByTwo(ps, *converter, [](double sx, double sy) { return Matrix{sx, 0, 0, sy, 0, 0}; });
}

void RotateOperator::execute(Interpreter& ps) {
  changeByOne(ps, *converter, [](double angle) {
    const auto [s, c] = sineAndCosine(angle * pi / 180);
    return Matrix{c, s, -s, c, 0, 0};
  });
}

void ConcatOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  const auto* array = as<ArrayObject>(operand.get());
  if (!array) {
    throw Ex(sourceFile, 1203, "Illegal param to concat operator");
  }
  concatenate(*converter, matrixFromArray(*array));
}

void SetmatrixOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  const auto* array = as<ArrayObject>(operand.get());
  if (!array) {
    throw Ex(sourceFile, 1229, "Matrix param expected for setmatrix operator");
  }
  const Matrix wanted = matrixFromArray(*array);
  Matrix& matrix = converter->topState().matrix;
  converter->writeMatrix(multiplyMatrix(wanted, invertMatrix(matrix)));
  matrix = wanted;
}

void CurrentmatrixOperator::execute(Interpreter& ps) {
  const auto array = popArrayObject(ps);
  matrixIntoArray(*array, converter->topState().matrix);
  ps.operandStack.pushChecked(array.get());
}

void DefaultmatrixOperator::execute(Interpreter& ps) {
  const auto* array = as<ArrayObject>(ps.operandStack.top());
  if (!array) {
    throw Ex(sourceFile, 1258, "Illegal param type to defaultmatrix");
  }
  matrixIntoArray(*array, converter->pageMatrix);
}

void Transformer::transform(Interpreter& ps, bool invert, bool delta) {
  const TransformOperands operands(ps, converter->topState().matrix);
  const Matrix matrix = invert ? invertMatrix(operands.matrix) : operands.matrix;
  pushTransformed(ps, matrix, operands.x, operands.y, delta);
}

void TransformOperator::execute(Interpreter& ps) {
  transform(ps, false, false);
}

void ItransformOperator::execute(Interpreter& ps) {
  transform(ps, true, false);
}

void IdtransformOperator::execute(Interpreter& ps) {
  transform(ps, true, true);
}

void DtransformOperator::execute(Interpreter& ps) {
  TransformOperands operands(ps, converter->topState().matrix);
  // The zeros are added all the same, so that no result is a negative zero.
  if (!operands.fromArray) {
    operands.matrix.e = operands.matrix.f = 0;
  }
  pushTransformed(ps, operands.matrix, operands.x, operands.y, false);
}

void addCoordinateOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<TranslateOperator>(converter);
  registry.add<TransformOperator>(converter);
  registry.add<ItransformOperator>(converter);
  registry.add<IdtransformOperator>(converter);
  registry.add<DtransformOperator>(converter);
  registry.add<RotateOperator>(converter);
  registry.add<ConcatOperator>(converter);
  registry.add<CurrentmatrixOperator>(converter);
  registry.add<ScaleOperator>(converter);
  registry.add<SetmatrixOperator>(converter);
  registry.add<DefaultmatrixOperator>(converter);
}

}  // namespace postscript
