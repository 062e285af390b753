// Sizes, and strings.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// string|name|array|dict length integer
POSTSCRIPT_OPERATOR(LengthOperator, "length");
// dict maxlength integer      (the entry count and 10)
POSTSCRIPT_OPERATOR(MaxlengthOperator, "maxlength");
// n string a string of n NUL bytes
POSTSCRIPT_OPERATOR(StringOperator, "string");
// string seek anchorsearch post seek true | string false      (shortens the body in place)
POSTSCRIPT_OPERATOR(AnchorsearchOperator, "anchorsearch");

void addTextOperators(OperatorRegistry& registry);

}  // namespace postscript
