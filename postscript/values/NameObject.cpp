#include "postscript/values/NameObject.h"

namespace postscript {

NameObject::NameObject(Symbol& symbol) : PostscriptObject(tag), name(symbol.text), symbol_(symbol) {
  symbol_.take();
  runBy = symbol.table() ? RunBy::name : RunBy::execute;
}

NameObject::~NameObject() {
  symbol_.giveBack();
}

std::string NameObject::describe() const {
  return std::string(typeName(type)) + " " + name;
}

}  // namespace postscript
