#include "postscript/engine/Operands.h"

namespace postscript {

Ex expectedType(TypeTag tag, const std::string& where) {
  return Ex("postscript/lib/ObjectStack", 62,
            "Expected " + std::string(typeName(tag)) + " at " + where);
}

}  // namespace postscript
