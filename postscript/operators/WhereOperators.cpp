#include "postscript/operators/WhereOperators.h"

#include "postscript/engine/Operands.h"

namespace postscript {

void WhereOperator::execute(Interpreter& ps) {
  const Held<> key = popObject(ps);
  DictionaryObject* dictionary = ps.dictionaries.where(keySymbol(ps.memory.symbols, *key));
  if (dictionary) {
    ps.operandStack.pushChecked(dictionary);
  }
  pushBoolean(ps, dictionary != nullptr);
}

void LoadOperator::execute(Interpreter& ps) {
  const Held<> key = popObject(ps);
  PostscriptObject* value = ps.dictionaries.lookup(keySymbol(ps.memory.symbols, *key));
  if (!value) {
    throw Ex("postscript/lib/WhereOperator", 51, "Undefined name passed to load operator");
  }
  ps.operandStack.pushChecked(value);
}

void KnownOperator::execute(Interpreter& ps) {
  const Held<> key = popObject(ps);
  const auto dictionary = popAs<DictionaryObject>(ps, "known");
  pushBoolean(ps, dictionary->body().get(keySymbol(ps.memory.symbols, *key)) != nullptr);
}

void addWhereOperators(OperatorRegistry& registry) {
  registry.add<WhereOperator>();
  registry.add<KnownOperator>();
  registry.add<LoadOperator>();
}

}  // namespace postscript
