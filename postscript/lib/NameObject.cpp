#include "postscript/lib/NameObject.h"

#include "postscript/lib/ArrayObject.h"
#include "postscript/lib/Ex.h"
#include "postscript/lib/Interpreter.h"

namespace postscript {

NameObject::~NameObject() = default;

void NameObject::execute(Interpreter& ps) {
  PostscriptObject* value = ps.dictionaries.lookup(name);
  if (!value) throw Ex("NameObject", 25, "NOTHING TO EXECUTE for " + name + "\n");
  makeRunnable(value);
  ps.executionStack.pushChecked(value);
}

std::string NameObject::describe() const {
  return std::string(typeName(type)) + " " + name;
}

}  // namespace postscript
