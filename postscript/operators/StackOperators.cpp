#include "postscript/operators/StackOperators.h"

#include <algorithm>

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/StackOperators";

// Each of the n topmost objects again, from the deepest on.
void copyObjects(Interpreter& ps, int32_t n) {
  for (int32_t i = 0; i < n; ++i) {
    if (n > ps.operandStack.size()) {
      throw Ex(sourceFile, 208, "object not on stack");
    }
    ps.operandStack.pushCloneFromTop(n - 1);
  }
}

void copyDictionary(Interpreter& ps, const DictionaryObject& source, DictionaryObject& copy) {
  copy.body().clear();
  for (const DictionaryEntry* entry : source.body().entries()) {
    copy.body().put(entry->symbol, ps.hold(entry->value->clone()).get());
  }
}

// The source may be the copy itself, which is empty then.
void copyArray(Interpreter& ps, const ArrayObject& source, ArrayObject& copy) {
  copy.items().clear();
  for (int32_t i = 0; i < source.items().size(); ++i) {
    copy.items().setAt(i, ps.hold(source.items().at(i)->clone()).get());
  }
}

void copyComposite(Interpreter& ps, const Held<>& copy) {
  const Held<> source = popObject(ps);
  if (source->type != copy->type) {
    throw Ex(sourceFile, 220, "expected parms to be the same for copy operator");
  }
  if (auto* dictionary = as<DictionaryObject>(copy.get())) {
    copyDictionary(ps, *as<DictionaryObject>(source.get()), *dictionary);
  } else if (auto* array = as<ArrayObject>(copy.get())) {
    copyArray(ps, *as<ArrayObject>(source.get()), *array);
  } else {
    throw Ex(sourceFile, 239, "unsupported copy type");
  }
  ps.operandStack.pushChecked(copy.get());
}

void putArrayInterval(Interpreter& ps, const ArrayObject& source, int32_t index,
                      PostscriptObject* destination) {
  auto* array = as<ArrayObject>(destination);
  if (!array) {
    throw Ex(sourceFile, 288, "putinterval- only expecting array ");
  }
  const int32_t count = source.items().size();
  if (int64_t{count} + index > array->items().size()) {
    throw Ex(sourceFile, 291, "invalid args to putinterval");
  }
  for (int32_t i = 0; i < count; ++i) {
    storeAt(ps, *array, int64_t{index} + i, source.items().at(i));
  }
}

// The bytes in front of the index, the source, and what the destination has after both: the bytes
// that the source covers are replaced, in place when it lies within the destination. An index
// outside counts as the nearer end.
void putStringInterval(const StringObject& source, int32_t index, PostscriptObject* destination) {
  auto* string = as<StringObject>(destination);
  if (!string) {
    throw Ex(sourceFile, 304, "putinterval- only expecting ps_string");
  }
  const auto size = static_cast<int64_t>(string->view().size());
  const auto sourceSize = static_cast<int64_t>(source.view().size());
  const int64_t begin = std::clamp<int64_t>(index, 0, size);
  const int64_t end = std::clamp(sourceSize + index, begin, size);
  string->body().expectSize(static_cast<size_t>(size - (end - begin) + sourceSize));
  string->text().replace(static_cast<size_t>(begin), static_cast<size_t>(end - begin),
                         source.text());
}

// The interval stands on the stack before anything is looked at, and stays there on failure.
void getArrayInterval(Interpreter& ps, const ArrayObject& source, int32_t index, int32_t count) {
  ArrayObject* interval = pushArray(ps);
  for (int32_t i = 0; i < count; ++i) {
    PostscriptObject* element = source.items().at(int64_t{index} + i);
    if (!element) {
      throw Ex(sourceFile, 360, "invlaid array");
    }
    interval->items().setAt(i, element);
  }
}

void getStringInterval(Interpreter& ps, const StringObject& source, int32_t index, int32_t count) {
  StringObject* interval = pushString(ps, {});
  if (index < 0 || static_cast<size_t>(index) > source.view().size() || count < 0) {
    throw Ex(sourceFile, 366, "start or count out of range in getinterval");
  }
  const std::string_view text =
      source.view().substr(static_cast<size_t>(index), static_cast<size_t>(count));
  ps.memory.budget.expectRoom(text.size());
  interval->setText(Text(text));
}

}  // namespace

void MarkOperator::execute(Interpreter& ps) {
  push<MarkObject>(ps);
}

void CleartomarkOperator::execute(Interpreter& ps) {
  while (popObject(ps)->type != TypeTag::mark) {
  }
}

void CounttomarkOperator::execute(Interpreter& ps) {
  pushInteger(ps, ps.operandStack.countToMark());
}

// For an empty stack the pop of the stack itself is the failure, here and below.
void PopOperator::execute(Interpreter& ps) {
  if (ps.operandStack.empty()) {
    ps.operandStack.pop();
  }
  ps.operandStack.drop();
}

void DupOperator::execute(Interpreter& ps) {
  if (ps.operandStack.empty()) {
    ps.operandStack.pop();
  }
  ps.operandStack.pushCloneFromTop(0);
}

void ExchOperator::execute(Interpreter& ps) {
  if (ps.operandStack.size() < 2) {
    popObject(ps);
    popObject(ps);
  }
  ps.operandStack.swapTopTwo();
}

void RollOperator::execute(Interpreter& ps) {
  NumberOperand n;
  NumberOperand j;
  if (!twoNumbers(ps, n, j) || n.isReal || j.isReal) {
    const Held<> top = popObject(ps);
    const Held<> next = popObject(ps);
    throw Ex(sourceFile, 102, "Illegal param type passed to roll operator");
  }
  ps.operandStack.drop(2);
  const int32_t count = n.integer;
  if (count == 0) {
    return;
  }
  if (count < 0 || count > ps.operandStack.size()) {
    throw Ex(sourceFile, 114, "rolling - expected more objects on stack");
  }
  const int32_t remainder = j.integer % count;
  ps.operandStack.rotateTop(count, j.integer > 0 ? count - remainder : -remainder);
}

void IndexOperator::execute(Interpreter& ps) {
  NumberOperand n;
  if (ps.operandStack.empty() || !ps.operandStack.numberFromTop(0, n) || n.isReal) {
    const Held<> operand = popObject(ps);
    throw Ex(sourceFile, 167, "Illegal param type passed to index operator");
  }
  ps.operandStack.drop();
  if (n.integer < 0 || n.integer >= ps.operandStack.size()) {
    throw Ex(sourceFile, 174, "Indexed object not on stack");
  }
  ps.operandStack.pushCloneFromTop(n.integer);
}

void ClearOperator::execute(Interpreter& ps) {
  ps.operandStack.clear();
}

void CountOperator::execute(Interpreter& ps) {
  pushInteger(ps, ps.operandStack.size());
}

void CopyOperator::execute(Interpreter& ps) {
  const Held<> top = popObject(ps);
  if (const auto* n = as<IntegerObject>(top.get())) {
    copyObjects(ps, n->value);
  } else {
    copyComposite(ps, top);
  }
}

void PutintervalOperator::execute(Interpreter& ps) {
  const Held<> source = popObject(ps);
  if (!source) {
    throw Ex(sourceFile, 273, "execting stack item");
  }
  const auto index = popIntegerObject(ps);
  const Held<> destination = popObject(ps);
  if (!destination) {
    throw Ex(sourceFile, 279, "execting stack item");
  }
  if (const auto* array = as<ArrayObject>(source.get())) {
    putArrayInterval(ps, *array, index->value, destination.get());
  } else if (const auto* string = as<StringObject>(source.get())) {
    putStringInterval(*string, index->value, destination.get());
  } else {
    throw Ex(sourceFile, 317, "putinterval expected array or string");
  }
}

void GetintervalOperator::execute(Interpreter& ps) {
  const auto count = popIntegerObject(ps);
  const auto index = popIntegerObject(ps);
  if (!index) {
    throw Ex(sourceFile, 340, "invalid args");
  }
  const Held<> container = popObject(ps);
  if (!container) {
    throw Ex(sourceFile, 344, "invalid args");
  }
  if (const auto* array = as<ArrayObject>(container.get())) {
    getArrayInterval(ps, *array, index->value, count->value);
  } else if (const auto* string = as<StringObject>(container.get())) {
    getStringInterval(ps, *string, index->value, count->value);
  } else {
    throw Ex(sourceFile, 373, "currently unsupported ");
  }
}

void addStackOperators(OperatorRegistry& registry) {
  registry.add<MarkOperator>("[");
  registry.add<MarkOperator>("mark");
  registry.add<CleartomarkOperator>();
  registry.add<CounttomarkOperator>();
  registry.add<PopOperator>();
  registry.add<DupOperator>();
  registry.add<ClearOperator>();
  registry.add<CountOperator>();
  registry.add<ExchOperator>();
  registry.add<RollOperator>();
  registry.add<IndexOperator>();
  registry.add<CopyOperator>();
  registry.add<PutintervalOperator>();
  registry.add<GetintervalOperator>();
}

}  // namespace postscript
