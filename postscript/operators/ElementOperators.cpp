// An index is read without making an object of it; whether it fits the container is tested when
// both have been popped.
#include "postscript/operators/ElementOperators.h"

#include <optional>

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/PutOperator";

// The index that is next on the stack, when it is an integer: it is popped then.
std::optional<int32_t> popPosition(Interpreter& ps) {
  NumberOperand number;
  if (ps.operandStack.empty() || !ps.operandStack.numberFromTop(0, number) || number.isReal) {
    return std::nullopt;
  }
  ps.operandStack.drop();
  return number.integer;
}

bool isOutside(std::string_view text, int32_t position) {
  return position < 0 || static_cast<size_t>(position) >= text.size();
}

[[noreturn]] void failPut() {
  throw Ex(sourceFile, 52, "Unsupported parameter types to put");
}

[[noreturn]] void failGet() {
  throw Ex(sourceFile, 108, "Unsupported parameter types to get");
}

void putAt(Interpreter& ps, PostscriptObject* container, int32_t position,
           PostscriptObject* value) {
  if (auto* array = as<ArrayObject>(container)) {
    return storeAt(ps, *array, position, value);
  }
  auto* string = as<StringObject>(container);
  if (!string || value->type != TypeTag::integer) {
    failPut();
  }
  if (isOutside(string->text(), position)) {
    throw Ex(sourceFile, 47, "Illegal string index passed to put");
  }
  // The index, not the value: this is how it has always been.
  string->text()[static_cast<size_t>(position)] = static_cast<char>(position & 0xff);
}

void pushElement(Interpreter& ps, const PostscriptObject* container, int32_t position) {
  if (const auto* array = as<ArrayObject>(container)) {
    PostscriptObject* element = array->items().at(position);
    if (!element) {
      throw Ex(sourceFile, 92, "Array index out of bounds");
    }
    return ps.operandStack.pushChecked(element);
  }
  const auto* string = as<StringObject>(container);
  if (!string) {
    failGet();
  }
  if (isOutside(string->text(), position)) {
    throw Ex(sourceFile, 103, "String index out of bounds");
  }
  pushInteger(ps, signedByte(string->text()[static_cast<size_t>(position)]));
}

}  // namespace

void PutOperator::execute(Interpreter& ps) {
  const Held<> value = popObject(ps);
  if (const auto position = popPosition(ps)) {
    const Held<> container = popObject(ps);
    return putAt(ps, container.get(), *position, value.get());
  }
  const Held<> key = popObject(ps);
  const Held<> container = popObject(ps);
  auto* dictionary = as<DictionaryObject>(container.get());
  if (!dictionary || key->type != TypeTag::name) {
    failPut();
  }
  dictionary->body().put(keySymbol(ps.memory.symbols, *key), value.get());
}

void GetOperator::execute(Interpreter& ps) {
  if (const auto position = popPosition(ps)) {
    const Held<> container = popObject(ps);
    return pushElement(ps, container.get(), *position);
  }
  const Held<> key = popObject(ps);
  const Held<> container = popObject(ps);
  const auto* dictionary = as<DictionaryObject>(container.get());
  if (!dictionary || key->type != TypeTag::name) {
    failGet();
  }
  PostscriptObject* value = dictionary->body().get(keySymbol(ps.memory.symbols, *key));
  if (!value) {
    throw Ex(sourceFile, 111, "get could not find element");
  }
  ps.operandStack.pushChecked(value);
}

void addElementOperators(OperatorRegistry& registry) {
  registry.add<PutOperator>();
  registry.add<GetOperator>();
}

}  // namespace postscript
