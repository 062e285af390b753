#include "postscript/operators/OutputOperators.h"

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {

// The share comes first: without room for it nothing of the line is printed.
void printLine(Interpreter& ps, const std::string& text) {
  ps.printShare.expectText(ps.printBuffer, ps.printBuffer.size() + text.size() + 1);
  ps.printBuffer.append(text).append("\n");
}

}  // namespace

void PrintValueOperator::execute(Interpreter& ps) {
  const Held<> object = popObject(ps);
  printLine(ps, object->valueText());
}

void PrintSyntaxOperator::execute(Interpreter& ps) {
  const Held<> object = popObject(ps);
  printLine(ps, object->syntaxText());
}

void StackOperator::execute(Interpreter& ps) {
  for (int32_t i = ps.operandStack.size() - 1; i >= 0; --i) {
    printLine(ps, ps.operandStack.at(i)->valueText());
  }
}

void addOutputOperators(OperatorRegistry& registry) {
  registry.add<StackOperator>();
  registry.add<PrintValueOperator>();
  registry.add<PrintSyntaxOperator>();
}

}  // namespace postscript
