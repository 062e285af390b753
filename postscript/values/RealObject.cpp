#include "postscript/values/RealObject.h"

#include "postscript/values/Ex.h"
#include "postscript/values/IntegerObject.h"
#include "postscript/values/NumberText.h"

namespace postscript {

std::string RealObject::describe() const {
  return std::string(typeName(type)) + " " + syntaxText();
}

std::string RealObject::syntaxText() const {
  std::string text;
  appendFixed(text, value, 6);
  return text;
}

void RealObject::add(const PostscriptObject& number) {
  if (const auto* real = as<RealObject>(&number)) {
    return add(real->value);
  }
  if (const auto* integer = as<IntegerObject>(&number)) {
    return add(integer->value);
  }
  throw Ex("RealObject", 12, "Unsupported number type for adding");
}

}  // namespace postscript
