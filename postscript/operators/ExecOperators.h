// exec.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// any exec -
POSTSCRIPT_OPERATOR(ExecOperator, "exec");

void addExecOperators(OperatorRegistry& registry);

}  // namespace postscript
