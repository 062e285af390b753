// The signature of an operator of the generated layer: Gives<Results...>(Operands...), each named
// by its type. Any is an operand of no checked type.
#pragma once

#include <tuple>

#include "postscript/engine/Operands.h"

namespace postscript::generated {

// Each type knows its class, how it is popped, and the default that stands for a result of it.
struct Any {
  using Object = PostscriptObject;
  static Held<> pop(Interpreter& ps) { return popObject(ps); }
};
struct Boolean {
  using Object = BooleanObject;
  static Held<> pop(Interpreter& ps) { return popBooleanObject(ps); }
  // True on purpose: an operator that nobody wrote answers yes.
  static PostscriptObject* pushDefault(Interpreter& ps) { return push<BooleanObject>(ps, true); }
};
struct Integer {
  using Object = IntegerObject;
  static Held<> pop(Interpreter& ps) { return popIntegerObject(ps); }
  static PostscriptObject* pushDefault(Interpreter& ps) { return push<IntegerObject>(ps, 0); }
};
// Stands for results of any type, too.
struct Real {
  using Object = RealObject;
  static PostscriptObject* pushDefault(Interpreter& ps) { return push<RealObject>(ps, 0.0); }
};
struct Name {
  using Object = NameObject;
  static PostscriptObject* pushDefault(Interpreter& ps) { return push<NameObject>(ps, ""); }
};
struct String {
  using Object = StringObject;
  static Held<> pop(Interpreter& ps) { return popStringObject(ps); }
  static PostscriptObject* pushDefault(Interpreter& ps) { return pushString(ps, {}); }
};
struct Array {
  using Object = ArrayObject;
  static Held<> pop(Interpreter& ps) { return popArrayObject(ps); }
  static PostscriptObject* pushDefault(Interpreter& ps) { return pushArray(ps); }
};
struct Dictionary {
  using Object = DictionaryObject;
  static Held<> pop(Interpreter& ps) { return popDictionaryObject(ps); }
  static PostscriptObject* pushDefault(Interpreter& ps) {
    return push<DictionaryObject>(ps, *ps.memory.current);
  }
};
struct Null {
  using Object = NullObject;
  static PostscriptObject* pushDefault(Interpreter& ps) { return push<NullObject>(ps); }
};
struct Mark {
  using Object = MarkObject;
  static Held<> pop(Interpreter& ps) { return popMarkObject(ps); }
  static PostscriptObject* pushDefault(Interpreter& ps) { return push<MarkObject>(ps); }
};

template <class... Results>
struct Gives {};

template <class Signature>
struct ObjectsOf;
template <class... Results, class... Operands>
struct ObjectsOf<Gives<Results...>(Operands...)> {
  using Type = std::tuple<typename Operands::Object&..., typename Results::Object&...>;
};
// What an operation is given: the operands, deepest first, then the results.
template <class Signature>
using Objects = typename ObjectsOf<Signature>::Type;

}  // namespace postscript::generated
