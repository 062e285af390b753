// What the engine does with a value that it runs. The classes themselves know nothing of the
// engine; what they do with it is defined here.
#include "postscript/engine/Interpreter.h"
#include "postscript/values/ArrayObject.h"
#include "postscript/values/Ex.h"
#include "postscript/values/NameObject.h"

namespace postscript {

void PostscriptObject::execute(Interpreter& ps) {
  ps.operandStack.pushChecked(this);
}

void NameObject::execute(Interpreter& ps) {
  PostscriptObject* value = ps.dictionaries.lookup(keySymbol(ps.memory.symbols, *this));
  if (!value) {
    throw Ex("NameObject", 25, "NOTHING TO EXECUTE for " + std::string(name()) + "\n");
  }
  makeRunnable(value);
  ps.executionStack.pushChecked(value);
}

// One step: the array goes back under its next element, until it has none left.
void ArrayObject::execute(Interpreter& ps) {
  if (items().empty()) {
    return;
  }
  if (execIndex >= items().size()) {
    executable = false;
    execIndex = 0;
    return;
  }
  PostscriptObject* element = items().at(execIndex++);
  ps.executionStack.pushChecked(this);
  ps.executionStack.pushChecked(element);
}

}  // namespace postscript
