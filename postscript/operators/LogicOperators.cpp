#include "postscript/operators/LogicOperators.h"

#include <functional>

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/IfOperators";

// Two booleans give a boolean, two integers an integer, bit by bit.
template <class Combine>
void combine(Interpreter& ps, int32_t line, const char* message, Combine bits) {
  const Held<> b = popObject(ps);
  const Held<> a = popObject(ps);
  const auto* booleanA = as<BooleanObject>(a.get());
  const auto* booleanB = as<BooleanObject>(b.get());
  const auto* integerA = as<IntegerObject>(a.get());
  const auto* integerB = as<IntegerObject>(b.get());
  if (booleanA && booleanB) {
    pushBoolean(ps, bits(int32_t{booleanA->value}, int32_t{booleanB->value}) != 0);
  } else if (integerA && integerB) {
    pushInteger(ps, bits(integerA->value, integerB->value));
  } else {
    throw Ex(sourceFile, line, message);
  }
}

}  // namespace

void IfOperator::execute(Interpreter& ps) {
  const Held<> procedure = popObject(ps);
  const auto condition = popAs<BooleanObject>(ps, "if");
  if (condition->value) {
    start(ps, procedure.get());
  }
}

void IfelseOperator::execute(Interpreter& ps) {
  const Held<> otherwise = popObject(ps);
  const Held<> procedure = popObject(ps);
  const auto condition = popAs<BooleanObject>(ps, "ifelse");
  start(ps, condition->value ? procedure.get() : otherwise.get());
}

void TrueOperator::execute(Interpreter& ps) {
  pushBoolean(ps, true);
}

void FalseOperator::execute(Interpreter& ps) {
  pushBoolean(ps, false);
}

void NullOperator::execute(Interpreter& ps) {
  push<NullObject>(ps);
}

void NotOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  if (const auto* boolean = as<BooleanObject>(operand.get())) {
    pushBoolean(ps, !boolean->value);
  } else if (const auto* integer = as<IntegerObject>(operand.get())) {
    pushInteger(ps, wrappingSubtract(0, integer->value));
  } else {
    throw Ex(sourceFile, 142, "Unsupported type of param to not");
  }
}

void AndOperator::execute(Interpreter& ps) {
  combine(ps, 177, "Unsupported type of param to and", std::bit_and<int32_t>());
}

void OrOperator::execute(Interpreter& ps) {
  combine(ps, 213, "Unsupported type of param to or", std::bit_or<int32_t>());
}

void XorOperator::execute(Interpreter& ps) {
  combine(ps, 249, "Unsupported type of param to xor", std::bit_xor<int32_t>());
}

void addLogicOperators(OperatorRegistry& registry) {
  registry.add<IfelseOperator>();
  registry.add<IfOperator>();
  registry.add<TrueOperator>();
  registry.add<FalseOperator>();
  registry.add<NullOperator>();
  registry.add<NotOperator>();
  registry.add<AndOperator>();
  registry.add<OrOperator>();
  registry.add<XorOperator>();
}

}  // namespace postscript
