// Sizes, and strings.
#ifndef POSTSCRIPT_LIB_LENGTHOPERATORS_H
#define POSTSCRIPT_LIB_LENGTHOPERATORS_H

#include "postscript/lib/NameObject.h"

namespace postscript {

// string|name|array|dict length integer
POSTSCRIPT_OPERATOR(LengthOperator, "length");
// dict maxlength integer      (the entry count and 10)
POSTSCRIPT_OPERATOR(MaxlengthOperator, "maxlength");
// n string a string of n NUL bytes
POSTSCRIPT_OPERATOR(StringOperator, "string");
// string seek anchorsearch post seek true | string false      (shortens the body in place)
POSTSCRIPT_OPERATOR(AnchorsearchOperator, "anchorsearch");

}  // namespace postscript

#endif
