#include "postscript/values/IntegerObject.h"

#include "postscript/values/Ex.h"
#include "postscript/values/NumberUtils.h"
#include "postscript/values/RealObject.h"

namespace postscript {

std::string IntegerObject::describe() const {
  return std::string(typeName(type)) + " " + std::to_string(value);
}

void IntegerObject::add(int32_t number) {
  value = wrappingAdd(value, number);
}

void IntegerObject::add(double number) {
  add(toInt32(number));
}

void IntegerObject::add(const PostscriptObject& number) {
  if (const auto* integer = as<IntegerObject>(&number)) {
    return add(integer->value);
  }
  if (const auto* real = as<RealObject>(&number)) {
    return add(real->value);
  }
  throw Ex("IntegerObject", 12, "Unsupported number type for IntegerObject adding");
}

}  // namespace postscript
