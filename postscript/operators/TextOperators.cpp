#include "postscript/operators/TextOperators.h"

#include "postscript/engine/Operands.h"
#include "postscript/values/Limits.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/LengthOperators";

int32_t lengthOf(const PostscriptObject& object) {
  if (const auto* string = as<StringObject>(&object)) {
    return static_cast<int32_t>(string->view().size());
  }
  if (const auto* name = as<NameObject>(&object)) {
    return static_cast<int32_t>(name->name().size());
  }
  if (const auto* array = as<ArrayObject>(&object)) {
    return array->items().size();
  }
  if (const auto* dictionary = as<DictionaryObject>(&object)) {
    return dictionary->body().size();
  }
  throw Ex(sourceFile, 42, "Unsupported param to length");
}

}  // namespace

void LengthOperator::execute(Interpreter& ps) {
  pushInteger(ps, lengthOf(*popObject(ps)));
}

void MaxlengthOperator::execute(Interpreter& ps) {
  pushInteger(ps, popAs<DictionaryObject>(ps, "maxlength")->body().size() + 10);
}

void StringOperator::execute(Interpreter& ps) {
  const auto length = popAs<IntegerObject>(ps, "length of string");
  if (length->value < 0) {
    throw Ex(sourceFile, 71, "negative length to string");
  }
  const auto bytes = static_cast<size_t>(length->value);
  checkStringSize(bytes);
  ps.memory.budget.expectRoom(bytes);
  pushString(ps, Text(bytes, '\0'));
}

void AnchorsearchOperator::execute(Interpreter& ps) {
  const auto seek = popStringObject(ps);
  const auto string = popStringObject(ps);
  const bool match = string->view().starts_with(seek->view());
  if (match) {
    string->body().dropFront(seek->view().size());
  }
  ps.operandStack.pushChecked(string.get());
  if (match) {
    ps.operandStack.pushChecked(seek.get());
  }
  pushBoolean(ps, match);
}

void addTextOperators(OperatorRegistry& registry) {
  registry.add<StringOperator>();
  registry.add<LengthOperator>();
  registry.add<MaxlengthOperator>();
  registry.add<AnchorsearchOperator>();
}

}  // namespace postscript
