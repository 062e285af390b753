#include "postscript/values/NameObject.h"

namespace postscript {

NameObject::NameObject(Symbol& symbol) : PostscriptObject(tag), symbol_(&symbol) {
  symbol.take();
  runBy = symbol.table() ? RunBy::name : RunBy::execute;
}

NameObject::~NameObject() {
  symbol_->giveBack();
}

Symbol& NameObject::keyIn(SymbolTable& symbols) {
  if (symbol_->table() != &symbols) {
    Symbol& key = symbols.symbolOf(name());
    key.take();
    symbol_->giveBack();
    symbol_ = &key;
  }
  return *symbol_;
}

std::string NameObject::describe() const {
  return std::string(typeName(type)) + " " + std::string(name());
}

}  // namespace postscript
