// NameObject: a name, and the base of every operator. An operator is a name whose text is the
// operator's and whose execute does its work.
#pragma once

#include <string>
#include <string_view>

#include "postscript/values/PostscriptObject.h"
#include "postscript/values/Symbol.h"

namespace postscript {

class NameObject : public PostscriptObject {
 public:
  static constexpr TypeTag tag = TypeTag::name;

  explicit NameObject(std::string_view theName) : NameObject(Symbol::make(theName)) {}
  explicit NameObject(Symbol& symbol);
  // Of a text that may never be looked up.
  NameObject(SymbolTable& symbols, std::string_view text)
      : NameObject(symbols.existingOrOwn(text)) {}
  ~NameObject() override;

  // Places what the name stands for on the execution stack.
  void execute(Interpreter& ps) override;
  std::string describe() const override;
  std::string syntaxText() const override { return std::string(name()); }
  std::string valueText() const override { return std::string(name()); }
  // A plain, executable name, also of a literal name and of an operator.
  PostscriptObject* clone() const override { return new NameObject(*symbol_); }

  std::string_view name() const { return symbol_->text(); }
  // Of the text: one of an interpreter's table unless the name has been no key so far.
  Symbol& symbol() const { return *symbol_; }
  // The table's symbol, which becomes the name's own, so that the table is asked once.
  Symbol& keyIn(SymbolTable& symbols);

 private:
  Symbol* symbol_;
};

// The class of an operator without state: Class, and its name as programs write it. The line that
// declares it says in a comment what it takes from the stack and what it leaves.
#define POSTSCRIPT_OPERATOR(Class, text)    \
  class Class : public NameObject {         \
   public:                                  \
    Class() : NameObject(text) {}           \
    void execute(Interpreter& ps) override; \
  }

}  // namespace postscript
