// Looking up.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// key where dict true | false
POSTSCRIPT_OPERATOR(WhereOperator, "where");
// key load value
POSTSCRIPT_OPERATOR(LoadOperator, "load");
// dict key known boolean
POSTSCRIPT_OPERATOR(KnownOperator, "known");

void addWhereOperators(OperatorRegistry& registry);

}  // namespace postscript
