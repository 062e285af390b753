#include "postscript/values/NumberUtils.h"

#include <limits>

#include "postscript/values/Ex.h"
#include "postscript/values/IntegerObject.h"
#include "postscript/values/RealObject.h"

namespace postscript {

double numberValue(const PostscriptObject& object) {
  if (const auto* integer = as<IntegerObject>(&object)) {
    return integer->value;
  }
  if (const auto* real = as<RealObject>(&object)) {
    return real->value;
  }
  throw Ex("postscript/lib/NumberUtils", 32, "Unsupported number type");
}

int32_t toInt32(double value) {
  if (!(value > -2147483649.0 && value < 2147483648.0)) {
    return std::numeric_limits<int32_t>::min();
  }
  return static_cast<int32_t>(value);
}

int32_t wrappingAdd(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

int32_t wrappingSubtract(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

int32_t wrappingMultiply(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

}  // namespace postscript
