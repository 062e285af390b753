#include "postscript/lib/ExecOperators.h"

#include "postscript/lib/Operands.h"

namespace postscript {

void ExecOperator::execute(Interpreter& ps) {
  const Held<> object = popObject(ps);
  makeRunnable(object.get());
  if (!object->executable) return ps.operandStack.pushChecked(object.get());
  if (object->type == TypeTag::string) {
    throw Ex("postscript/lib/ExecOperators", 32, "Does not currently support execing a string");
  }
  ps.executionStack.pushChecked(object.get());
}

}  // namespace postscript
