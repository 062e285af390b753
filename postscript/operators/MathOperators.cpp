#include "postscript/operators/MathOperators.h"

#include <cmath>

#include "postscript/engine/Operands.h"
#include "postscript/values/Trigonometry.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/MathOperators";

// Pops a number and pushes what becomes of it, an integer of an integer and a real of a real.
template <class OfInteger, class OfReal>
void calcUnary(Interpreter& ps, int32_t line, const char* message, OfInteger ofInteger,
               OfReal ofReal) {
  NumberOperand number;
  if (ps.operandStack.empty() || !ps.operandStack.numberFromTop(0, number)) {
    const Held<> operand = popObject(ps);
    throw Ex(sourceFile, line, message);
  }
  ps.operandStack.drop();
  if (number.isReal) {
    pushReal(ps, ofReal(number.real));
  } else {
    pushInteger(ps, ofInteger(number.integer));
  }
}

int32_t same(int32_t value) {
  return value;
}

int32_t negative(int32_t value) {
  return wrappingSubtract(0, value);
}

void checkDivisor(int32_t divisor, int32_t line) {
  if (divisor == 0) {
    throw Ex(sourceFile, line, "division by zero");
  }
}

}  // namespace

template <class Operator>
void MathOperator::calc(Operator& self, Interpreter& ps) {
  NumberOperand a;
  NumberOperand b;
  if (!twoNumbers(ps, a, b)) {
    return failCalc(ps);
  }
  ps.operandStack.drop(2);
  if (a.isReal || b.isReal) {
    self.realA = a.real;
    self.realB = b.real;
    self.calcReal(ps);
  } else {
    self.intA = a.integer;
    self.intB = b.integer;
    self.calcInteger(ps);
  }
}

// At least one of the two is no number, or missing.
void MathOperator::failCalc(Interpreter& ps) {
  const Held<> b = popObject(ps);
  const Held<> a = popObject(ps);
  if (a->type == TypeTag::real || b->type == TypeTag::real) {
    numberValue(*a);
    numberValue(*b);
  }
  throw Ex(sourceFile, 37, "Unsupported number type in calc");
}

void TrigOperator::calc(Interpreter& ps) {
  pushReal(ps, valueAt(popNumber(ps)));
}

void AddOperator::execute(Interpreter& ps) {
  calc(*this, ps);
}
void AddOperator::calcReal(Interpreter& ps) const {
  pushReal(ps, realA + realB);
}
void AddOperator::calcInteger(Interpreter& ps) const {
  pushInteger(ps, wrappingAdd(intA, intB));
}

void SubOperator::execute(Interpreter& ps) {
  calc(*this, ps);
}
void SubOperator::calcReal(Interpreter& ps) const {
  pushReal(ps, realA - realB);
}
void SubOperator::calcInteger(Interpreter& ps) const {
  pushInteger(ps, wrappingSubtract(intA, intB));
}

void MulOperator::execute(Interpreter& ps) {
  calc(*this, ps);
}
void MulOperator::calcReal(Interpreter& ps) const {
  pushReal(ps, realA * realB);
}
void MulOperator::calcInteger(Interpreter& ps) const {
  pushInteger(ps, wrappingMultiply(intA, intB));
}

void DivOperator::execute(Interpreter& ps) {
  calc(*this, ps);
}
void DivOperator::calcReal(Interpreter& ps) const {
  pushReal(ps, realA / realB);
}
void DivOperator::calcInteger(Interpreter& ps) const {
  pushReal(ps, static_cast<double>(intA) / intB);
}

void IdivOperator::execute(Interpreter& ps) {
  calc(*this, ps);
}
void IdivOperator::calcReal(Interpreter& ps) const {
  pushInteger(ps, toInt32(realA / realB));
}
// The least integer has no negative: divided by -1 it wraps, where the processor would trap.
void IdivOperator::calcInteger(Interpreter& ps) const {
  checkDivisor(intB, 190);
  pushInteger(ps, intB == -1 ? negative(intA) : intA / intB);
}

void ModOperator::execute(Interpreter& ps) {
  NumberOperand a;
  NumberOperand b;
  if (!twoNumbers(ps, a, b) || a.isReal || b.isReal) {
    popObject(ps);
    popObject(ps);
    throw Ex(sourceFile, 263, "Illegal param types for mod operator");
  }
  ps.operandStack.drop(2);
  checkDivisor(b.integer, 264);
  pushInteger(ps, b.integer == -1 ? 0 : std::abs(a.integer % b.integer));
}

void NegOperator::execute(Interpreter& ps) {
  calcUnary(ps, 210, "Unsupported number type in neg", negative,
            [](double value) { return value * -1.0; });
}

void AbsOperator::execute(Interpreter& ps) {
  calcUnary(
      ps, 242, "Unsupported number type in abs",
      [](int32_t value) { return value < 0 ? negative(value) : value; },
      [](double value) { return value >= 0.0 ? value : value * -1.0; });
}

void CeilingOperator::execute(Interpreter& ps) {
  calcUnary(ps, 304, "Unsupported number type in ceiling", same,
            [](double value) { return std::ceil(value); });
}

void FloorOperator::execute(Interpreter& ps) {
  calcUnary(ps, 334, "Unsupported number type in floor", same,
            [](double value) { return std::floor(value); });
}

// By way of an integer: beyond 32 bits every real comes out as the least one.
void RoundOperator::execute(Interpreter& ps) {
  calcUnary(ps, 369, "Unsupported number type in round", same, [](double value) {
    return static_cast<double>(toInt32(value > 0.0 ? value + 0.5 : value - 0.5));
  });
}

void SqrtOperator::execute(Interpreter& ps) {
  pushReal(ps, std::sqrt(popNumber(ps)));
}

double SinOperator::valueAt(double degrees) {
  return sine(degrees * pi / 180.0);
}

double CosOperator::valueAt(double degrees) {
  return cosine(degrees * pi / 180.0);
}

// The deeper one is read first: when both are bad, its failure is the one that shows.
void AtanOperator::execute(Interpreter& ps) {
  const Held<> den = popObject(ps);
  const Held<> num = popObject(ps);
  const double y = numberValue(*num);
  pushReal(ps, std::atan2(y, numberValue(*den)) * 180.0 / pi);
}

void addMathOperators(OperatorRegistry& registry) {
  registry.add<SubOperator>();
  registry.add<AddOperator>();
  registry.add<MulOperator>();
  registry.add<DivOperator>();
  registry.add<IdivOperator>();
  registry.add<CosOperator>();
  registry.add<SinOperator>();
  registry.add<AtanOperator>();
  registry.add<SqrtOperator>();
  registry.add<NegOperator>();
  registry.add<AbsOperator>();
  registry.add<ModOperator>();
  registry.add<FloorOperator>();
  registry.add<CeilingOperator>();
  registry.add<RoundOperator>();
}

}  // namespace postscript
