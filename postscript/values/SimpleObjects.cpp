#include "postscript/values/SimpleObjects.h"

namespace postscript {

std::string BooleanObject::describe() const {
  return std::string(typeName(type)) + " " + syntaxText();
}

}  // namespace postscript
