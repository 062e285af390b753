// What a program asks of its environment and sets in it. The answers are fixed, so that a driver's
// prologue takes the plainest path.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// any setglobal any      (one way: never back to local)
POSTSCRIPT_OPERATOR(SetglobalOperator, "setglobal");
// - currentglobal boolean
POSTSCRIPT_OPERATOR(CurrentglobalOperator, "currentglobal");
// - vmstatus level used maximum
POSTSCRIPT_OPERATOR(VmstatusOperator, "vmstatus");
// - statusdict dict      (a new one)
POSTSCRIPT_OPERATOR(StatusdictOperator, "statusdict");
// key category resourcestatus 0 0 true
POSTSCRIPT_OPERATOR(ResourcestatusOperator, "resourcestatus");
// key font definefont font
POSTSCRIPT_OPERATOR(DefinefontOperator, "definefont");

void addSystemOperators(OperatorRegistry& registry);

}  // namespace postscript
