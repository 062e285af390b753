#include "postscript/operators/ExecOperators.h"

#include "postscript/engine/Operands.h"

namespace postscript {

// Literal objects go back: only what has been made to run, or was, goes to the execution stack.
void ExecOperator::execute(Interpreter& ps) {
  const Held<> object = popObject(ps);
  makeRunnable(object.get());
  if (!object->executable) {
    return ps.operandStack.pushChecked(object.get());
  }
  if (object->type == TypeTag::string) {
    throw Ex("postscript/lib/ExecOperators", 32, "Does not currently support execing a string");
  }
  ps.executionStack.pushChecked(object.get());
}

void addExecOperators(OperatorRegistry& registry) {
  registry.add<ExecOperator>();
}

}  // namespace postscript
