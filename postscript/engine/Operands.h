// Operands: how operators take objects off the operand stack. What is popped is held (Held.h): a
// wrong object is neither pushed back nor lost.
#pragma once

#include <string>

#include "postscript/engine/Interpreter.h"
#include "postscript/values/ArrayObject.h"
#include "postscript/values/DictionaryObject.h"
#include "postscript/values/Ex.h"
#include "postscript/values/IntegerObject.h"
#include "postscript/values/NumberUtils.h"
#include "postscript/values/RealObject.h"
#include "postscript/values/SimpleObjects.h"
#include "postscript/values/StringObject.h"

namespace postscript {

// "Expected ps_integer at where".
Ex expectedType(TypeTag tag, const std::string& where);

inline Held<> popObject(Interpreter& ps) {
  return ps.hold(ps.operandStack.pop());
}

// Fails with an operator's own name, or a helper's, when the object is no T.
template <class T>
T* expect(const Held<>& object, const char* where) {
  if (T* typed = as<T>(object.get())) {
    return typed;
  }
  throw expectedType(T::tag, where);
}
template <class T>
Held<T> popAs(Interpreter& ps, const char* where) {
  const Held<> object = popObject(ps);
  return ps.hold(expect<T>(object, where));
}

inline Held<BooleanObject> popBooleanObject(Interpreter& ps) {
  return popAs<BooleanObject>(ps, "popBooleanObject");
}
inline Held<DictionaryObject> popDictionaryObject(Interpreter& ps) {
  return popAs<DictionaryObject>(ps, "popDictionaryObject");
}
inline Held<IntegerObject> popIntegerObject(Interpreter& ps) {
  return popAs<IntegerObject>(ps, "popIntegerObject");
}
inline Held<ArrayObject> popArrayObject(Interpreter& ps) {
  return popAs<ArrayObject>(ps, "popArrayObject");
}
inline Held<StringObject> popStringObject(Interpreter& ps) {
  return popAs<StringObject>(ps, "popStringObject");
}
inline Held<MarkObject> popMarkObject(Interpreter& ps) {
  return popAs<MarkObject>(ps, "popMarkObject");
}

// Pops a number and reads it. Fails for anything else.
inline double popNumber(Interpreter& ps) {
  NumberOperand number;
  if (ps.operandStack.empty() || !ps.operandStack.numberFromTop(0, number)) {
    return numberValue(*popObject(ps));
  }
  ps.operandStack.drop();
  return number.real;
}

// Pops an integer and reads it. Fails with an operator's own name, or a helper's, for anything
// else.
inline int32_t popInteger(Interpreter& ps, const char* where = "popIntegerObject") {
  NumberOperand number;
  if (ps.operandStack.empty() || !ps.operandStack.numberFromTop(0, number) || number.isReal) {
    return popAs<IntegerObject>(ps, where)->value;
  }
  ps.operandStack.drop();
  return number.integer;
}

// Pops a boolean and reads it.
inline bool popBoolean(Interpreter& ps, const char* where = "popBooleanObject") {
  if (!ps.operandStack.empty()) {
    const StackItem& top = ps.operandStack.itemFromTop(0);
    if (top.kind == StackItem::Kind::boolean) {
      const bool value = top.boolean;
      ps.operandStack.drop();
      return value;
    }
  }
  return popAs<BooleanObject>(ps, where)->value;
}

// Whether the two topmost objects are numbers; then `a`, the deeper one, and `b` have their values,
// and both are still on the stack.
inline bool twoNumbers(const Interpreter& ps, NumberOperand& a, NumberOperand& b) {
  return ps.operandStack.size() >= 2 && ps.operandStack.numberFromTop(0, b) &&
         ps.operandStack.numberFromTop(1, a);
}

// Stores into an array. The count is taken before the index is looked at: without such a place the
// object keeps it for as long as the interpreter lives.
inline void storeAt(Interpreter& ps, ArrayObject& array, int64_t index, PostscriptObject* object) {
  ObjectStack& items = array.items();
  if (index < 0 || index > items.size()) {
    ps.abandoned.count(object);
  }
  items.setAt(index, object);
}

// Results.
template <class T, class... Arguments>
T* push(Interpreter& ps, Arguments&&... arguments) {
  return ps.operandStack.pushNew<T>(std::forward<Arguments>(arguments)...);
}
inline void pushInteger(Interpreter& ps, int32_t value) {
  ps.operandStack.pushInteger(value);
}
inline void pushReal(Interpreter& ps, double value) {
  ps.operandStack.pushReal(value);
}
inline void pushBoolean(Interpreter& ps, bool value) {
  ps.operandStack.pushBoolean(value);
}
// A new, literal string in the current space.
inline StringObject* pushString(Interpreter& ps, Text text) {
  return push<StringObject>(ps, *ps.memory.current, std::move(text));
}
// A new, empty, literal array in the current space.
inline ArrayObject* pushArray(Interpreter& ps, char kind = ArrayData::array) {
  return push<ArrayObject>(ps, *ps.memory.current, kind);
}

// Places a procedure on the execution stack, set to run from its start; anything else as it is.
inline void start(Interpreter& ps, PostscriptObject* procedure) {
  ps.executionStack.pushChecked(procedure);
  makeRunnable(procedure);
}

}  // namespace postscript
