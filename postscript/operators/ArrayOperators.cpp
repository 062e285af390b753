#include "postscript/operators/ArrayOperators.h"

#include <algorithm>

#include "postscript/engine/Operands.h"
#include "postscript/values/Limits.h"

namespace postscript {

namespace {
constexpr const char* sourceFile = "postscript/lib/ArrayObject";
}

void BeginProcedureOperator::execute(Interpreter& ps) {
  ps.deferredStack.pushNew<ArrayObject>(*ps.memory.current, ArrayData::procedure);
}

void EndProcedureOperator::execute(Interpreter& ps) {
  const Held<> finished = ps.hold(ps.deferredStack.pop());
  auto* procedure = expect<ArrayObject>(finished, "Mark execute");
  if (const auto* enclosing = static_cast<ArrayObject*>(ps.deferredStack.top())) {
    enclosing->items().pushChecked(procedure);
  } else {
    ps.operandStack.pushChecked(procedure);
  }
}

// The elements move over in one piece; without a mark the pop of the mark fails.
void EndArrayOperator::execute(Interpreter& ps) {
  const Held<ArrayObject> array = ps.hold(new ArrayObject(*ps.memory.current, ArrayData::array));
  const int32_t size = ps.operandStack.size();
  int32_t count = 0;
  while (count < size && ps.operandStack.typeFromTop(count) != TypeTag::mark) {
    ++count;
  }
  ps.operandStack.moveTop(count, array->items());
  popMarkObject(ps);
  ps.operandStack.pushChecked(array.get());
}

// A negative count makes an empty array.
void ArrayOperator::execute(Interpreter& ps) {
  const auto count = popAs<IntegerObject>(ps, "array");
  if (count->value > limits::arrayElements) {
    throw Ex(sourceFile, 120, "array is too large");
  }
  const Held<ArrayObject> array = ps.hold(new ArrayObject(*ps.memory.current, ArrayData::array));
  for (int32_t i = 0; i < count->value; ++i) {
    array->items().pushNew<NullObject>();
  }
  ps.operandStack.pushChecked(array.get());
}

void PackedarrayOperator::execute(Interpreter& ps) {
  const auto count = popAs<IntegerObject>(ps, "packedarray");
  const Held<ArrayObject> array = ps.hold(new ArrayObject(*ps.memory.current, ArrayData::array));
  const int32_t wanted = std::max(count->value, 0);
  ps.operandStack.moveTop(std::min(wanted, ps.operandStack.size()), array->items());
  // With too few objects all have been taken, and the next pop fails.
  if (array->items().size() < wanted) {
    ps.operandStack.pop();
  }
  ps.operandStack.pushChecked(array.get());
}

void SetpackingOperator::execute(Interpreter& ps) {
  popAs<BooleanObject>(ps, "setpacking");
}

void CurrentpackingOperator::execute(Interpreter& ps) {
  pushBoolean(ps, true);
}

void AloadOperator::execute(Interpreter& ps) {
  const auto array = popAs<ArrayObject>(ps, "aload");
  for (int32_t i = 0; i < array->items().size(); ++i) {
    ps.operandStack.pushChecked(array->items().at(i));
  }
  ps.operandStack.pushChecked(array.get());
}

void AstoreOperator::execute(Interpreter& ps) {
  const auto array = popAs<ArrayObject>(ps, "astore");
  for (int32_t i = array->items().size() - 1; i >= 0; --i) {
    array->items().setAt(i, popObject(ps).get());
  }
  ps.operandStack.pushChecked(array.get());
}

void addArrayOperators(OperatorRegistry& registry) {
  registry.add<BeginProcedureOperator>();
  registry.add<EndProcedureOperator>();
  registry.add<EndArrayOperator>();
  registry.add<ArrayOperator>();
  registry.add<PackedarrayOperator>();
  registry.add<SetpackingOperator>();
  registry.add<CurrentpackingOperator>();
  registry.add<AloadOperator>();
  registry.add<AstoreOperator>();
}

}  // namespace postscript
