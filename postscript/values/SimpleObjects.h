// The values without a body or arithmetic of their own: booleans, null and marks.
#pragma once

#include <string>

#include "postscript/values/PostscriptObject.h"

namespace postscript {

// Executable, and executing it pushes it: it behaves as a literal.
class BooleanObject : public PostscriptObject {
 public:
  static constexpr TypeTag tag = TypeTag::boolean;

  explicit BooleanObject(bool theValue) : PostscriptObject(tag), value(theValue) {}

  std::string describe() const override;
  std::string syntaxText() const override { return value ? "true" : "false"; }
  std::string valueText() const override { return value ? "true" : "false"; }
  PostscriptObject* clone() const override { return new BooleanObject(value); }

  bool value;
};

class NullObject : public PostscriptObject {
 public:
  static constexpr TypeTag tag = TypeTag::null;

  NullObject() : PostscriptObject(tag) {}

  std::string syntaxText() const override { return "null"; }
  PostscriptObject* clone() const override { return new NullObject; }
};

// A mark that the engine meets vanishes; marks reach the operand stack only through the operators
// that push them.
class MarkObject : public PostscriptObject {
 public:
  static constexpr TypeTag tag = TypeTag::mark;

  MarkObject() : PostscriptObject(tag) {}

  void execute(Interpreter&) override {}
  std::string syntaxText() const override { return "-mark-"; }
  PostscriptObject* clone() const override { return new MarkObject; }
};

}  // namespace postscript
