#include "postscript/values/NameObject.h"

namespace postscript {

NameObject::~NameObject() = default;

std::string NameObject::describe() const {
  return std::string(typeName(type)) + " " + name;
}

}  // namespace postscript
