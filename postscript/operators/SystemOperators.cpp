#include "postscript/operators/SystemOperators.h"

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {
constexpr const char* sourceFile = "Interpreter";
}

void SetglobalOperator::execute(Interpreter& ps) {
  ps.memory.current = ps.memory.global;
}

void CurrentglobalOperator::execute(Interpreter& ps) {
  pushBoolean(ps, ps.memory.current == ps.memory.global);
}

// Nothing is measured. The two numbers tell any program that it has enough.
void VmstatusOperator::execute(Interpreter& ps) {
  pushInteger(ps, ps.saveLevel);
  pushInteger(ps, 100000);
  pushInteger(ps, 100000000);
}

void StatusdictOperator::execute(Interpreter& ps) {
  const Held<DictionaryObject> status = ps.hold(new DictionaryObject(*ps.memory.current));
  status->putNew<StringObject>("product", *ps.memory.current, "Quillpress PostScript Interpreter");
  status->putNew<IntegerObject>("processcolors", 3);
  ps.operandStack.pushChecked(status.get());
}

void ResourcestatusOperator::execute(Interpreter& ps) {
  const Held<> category = popObject(ps);
  const Held<> key = popObject(ps);
  if (!category || !key) {
    throw Ex(sourceFile, 195, "resourcestatus invalid args");
  }
  pushInteger(ps, 0);
  pushInteger(ps, 0);
  pushBoolean(ps, true);
}

void DefinefontOperator::execute(Interpreter& ps) {
  const auto font = popDictionaryObject(ps);
  const Held<> key = popObject(ps);
  if (!key) {
    throw Ex(sourceFile, 236, "definefont invalid args");
  }
  ps.dictionaries.fontDirectory->body().put(KeyText(*key), font.get());
  ps.operandStack.pushChecked(font.get());
}

void addSystemOperators(OperatorRegistry& registry) {
  registry.add<CurrentglobalOperator>();
  registry.add<SetglobalOperator>();
  registry.add<VmstatusOperator>();
  registry.add<StatusdictOperator>();
  registry.add<DefinefontOperator>();
  registry.add<ResourcestatusOperator>();
}

}  // namespace postscript
