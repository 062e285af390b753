// Access to the elements of composite objects.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// dict name value put -; array index value put -      (the index behind the last appends);
// string index integer put -      (stores the low byte of the index)
POSTSCRIPT_OPERATOR(PutOperator, "put");
// dict name get value; array index get value; string index get byte      (sign-extended)
POSTSCRIPT_OPERATOR(GetOperator, "get");

void addElementOperators(OperatorRegistry& registry);

}  // namespace postscript
