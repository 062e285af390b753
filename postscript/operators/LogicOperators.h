// Conditions and logic, and the constants.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// boolean proc if -
POSTSCRIPT_OPERATOR(IfOperator, "if");
// boolean proc1 proc2 ifelse -
POSTSCRIPT_OPERATOR(IfelseOperator, "ifelse");
// - true true
POSTSCRIPT_OPERATOR(TrueOperator, "true");
// - false false
POSTSCRIPT_OPERATOR(FalseOperator, "false");
// - null null
POSTSCRIPT_OPERATOR(NullOperator, "null");
// boolean not boolean; integer not its arithmetic negative
POSTSCRIPT_OPERATOR(NotOperator, "not");
// a b and boolean|integer
POSTSCRIPT_OPERATOR(AndOperator, "and");
// a b or boolean|integer
POSTSCRIPT_OPERATOR(OrOperator, "or");
// a b xor boolean|integer
POSTSCRIPT_OPERATOR(XorOperator, "xor");

void addLogicOperators(OperatorRegistry& registry);

}  // namespace postscript
