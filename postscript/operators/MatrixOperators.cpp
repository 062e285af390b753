#include "postscript/operators/MatrixOperators.h"

#include "postscript/engine/Operands.h"
#include "postscript/values/Matrix.h"

namespace postscript {

namespace {
constexpr const char* sourceFile = "postscript/lib/MatrixOperators";
}

void MatrixOperator::execute(Interpreter& ps) {
  matrixIntoArray(*pushArray(ps), Matrix());
}

void IdentmatrixOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  auto* array = as<ArrayObject>(operand.get());
  if (!array) {
    throw Ex(sourceFile, 49, "Illegal param type to identmatrix");
  }
  constexpr double identity[] = {1, 0, 0, 1, 0, 0};
  for (int32_t i = 0; i < 6; ++i) {
    array->items().setAt(i, ps.hold(new RealObject(identity[i])).get());
  }
  ps.operandStack.pushChecked(array);
}

void ConcatmatrixOperator::execute(Interpreter& ps) {
  const Held<> top = popObject(ps);
  const Held<> next = popObject(ps);
  const Held<> deepest = popObject(ps);
  auto* destination = as<ArrayObject>(top.get());
  const auto* m2 = as<ArrayObject>(next.get());
  const auto* m1 = as<ArrayObject>(deepest.get());
  if (!destination || !m1 || !m2) {
    throw Ex(sourceFile, 79, "Illegal param type to concatmatrix");
  }
  // m1 is read first: when both are bad, its failure is the one that shows.
  const Matrix first = matrixFromArray(*m1);
  const Matrix second = matrixFromArray(*m2);
  matrixIntoArray(*destination, multiplyMatrix(first, second));
  ps.operandStack.pushChecked(destination);
}

void addMatrixOperators(OperatorRegistry& registry) {
  registry.add<MatrixOperator>();
  registry.add<IdentmatrixOperator>();
  registry.add<ConcatmatrixOperator>();
}

}  // namespace postscript
