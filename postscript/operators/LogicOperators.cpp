#include "postscript/operators/LogicOperators.h"

#include <functional>

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/IfOperators";

// Two booleans give a boolean, two integers an integer, bit by bit.
template <class Combine>
void combine(Interpreter& ps, int32_t line, const char* message, Combine bits) {
  NumberOperand a;
  NumberOperand b;
  if (twoNumbers(ps, a, b) && !a.isReal && !b.isReal) {
    ps.operandStack.drop(2);
    return pushInteger(ps, bits(a.integer, b.integer));
  }
  const ObjectStack& stack = ps.operandStack;
  if (stack.size() < 2 || stack.typeFromTop(0) != TypeTag::boolean ||
      stack.typeFromTop(1) != TypeTag::boolean) {
    const Held<> top = popObject(ps);
    const Held<> next = popObject(ps);
    throw Ex(sourceFile, line, message);
  }
  const bool top = popBoolean(ps);
  const bool next = popBoolean(ps);
  pushBoolean(ps, bits(int32_t{next}, int32_t{top}) != 0);
}

}  // namespace

void IfOperator::execute(Interpreter& ps) {
  const Held<> procedure = popObject(ps);
  if (popBoolean(ps, "if")) {
    start(ps, procedure.get());
  }
}

void IfelseOperator::execute(Interpreter& ps) {
  const Held<> otherwise = popObject(ps);
  const Held<> procedure = popObject(ps);
  start(ps, popBoolean(ps, "ifelse") ? procedure.get() : otherwise.get());
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

// For an empty stack the pop is the failure.
void NotOperator::execute(Interpreter& ps) {
  NumberOperand number;
  if (ps.operandStack.empty()) {
    ps.operandStack.pop();
  }
  if (ps.operandStack.typeFromTop(0) == TypeTag::boolean) {
    pushBoolean(ps, !popBoolean(ps));
  } else if (ps.operandStack.numberFromTop(0, number) && !number.isReal) {
    pushInteger(ps, wrappingSubtract(0, popInteger(ps)));
  } else {
    const Held<> operand = popObject(ps);
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
