#include "postscript/operators/OutputOperators.h"

#include "postscript/engine/Operands.h"

namespace postscript {

void PrintValueOperator::execute(Interpreter& ps) {
  const Held<> object = popObject(ps);
  ps.printBuffer.append(object->valueText()).append("\n");
}

void PrintSyntaxOperator::execute(Interpreter& ps) {
  const Held<> object = popObject(ps);
  ps.printBuffer.append(object->syntaxText()).append("\n");
}

void StackOperator::execute(Interpreter& ps) {
  for (int32_t i = ps.operandStack.size() - 1; i >= 0; --i) {
    ps.printBuffer.append(ps.operandStack.at(i)->valueText()).append("\n");
  }
}

void addOutputOperators(OperatorRegistry& registry) {
  registry.add<StackOperator>();
  registry.add<PrintValueOperator>();
  registry.add<PrintSyntaxOperator>();
}

}  // namespace postscript
