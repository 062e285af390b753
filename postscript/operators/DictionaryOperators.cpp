#include "postscript/operators/DictionaryOperators.h"

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/BeginOperator";

// Pops value and key and puts them into the dictionary that the key chooses.
template <class Choose>
void define(Interpreter& ps, Choose choose) {
  const Held<> value = popObject(ps);
  const Held<> key = popObject(ps);
  Symbol& symbol = keySymbol(ps.memory.symbols, *key);
  DictionaryObject* dictionary = choose(symbol);
  if (!dictionary) {
    throw Ex(sourceFile, 58, "no dictionary on dictionary stack");
  }
  dictionary->body().put(symbol, value.get());
}

}  // namespace

void DictOperator::execute(Interpreter& ps) {
  popObject(ps);
  push<DictionaryObject>(ps, *ps.memory.current);
}

void BeginOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  auto* dictionary = as<DictionaryObject>(operand.get());
  if (!dictionary) {
    throw Ex(sourceFile, 23, "expecting dictionary on op stack");
  }
  ps.dictionaries.push(dictionary);
}

void EndOperator::execute(Interpreter& ps) {
  release(ps.dictionaries.pop());
}

void DefOperator::execute(Interpreter& ps) {
  define(ps, [&ps](Symbol&) { return ps.dictionaries.top(); });
}

void StoreOperator::execute(Interpreter& ps) {
  define(ps, [&ps](Symbol& key) {
    DictionaryObject* holder = ps.dictionaries.where(key);
    return holder ? holder : ps.dictionaries.top();
  });
}

// What is no dictionary is taken without a failure.
void UndefOperator::execute(Interpreter& ps) {
  const Held<> key = popObject(ps);
  const Held<> operand = popObject(ps);
  if (const auto* dictionary = as<DictionaryObject>(operand.get())) {
    dictionary->body().remove(keySymbol(ps.memory.symbols, *key));
  }
}

void CurrentdictOperator::execute(Interpreter& ps) {
  ps.operandStack.pushChecked(ps.dictionaries.top());
}

void CleardictstackOperator::execute(Interpreter& ps) {
  ps.dictionaries.clearToPermanent();
}

void addDictionaryOperators(OperatorRegistry& registry) {
  registry.add<StoreOperator>();
  registry.add<DictOperator>();
  registry.add<UndefOperator>();
  registry.add<CurrentdictOperator>();
  registry.add<BeginOperator>();
  registry.add<DefOperator>();
  registry.add<EndOperator>();
  registry.add<CleardictstackOperator>();
}

}  // namespace postscript
