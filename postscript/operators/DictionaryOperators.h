// The dictionary stack, and what is defined in it.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// any dict dict
POSTSCRIPT_OPERATOR(DictOperator, "dict");
// dict begin -
POSTSCRIPT_OPERATOR(BeginOperator, "begin");
// - end -      (no dictionary is protected)
POSTSCRIPT_OPERATOR(EndOperator, "end");
// key value def -
POSTSCRIPT_OPERATOR(DefOperator, "def");
// key value store -      (where the key stands; else as def)
POSTSCRIPT_OPERATOR(StoreOperator, "store");
// dict key undef -
POSTSCRIPT_OPERATOR(UndefOperator, "undef");
// - currentdict dict
POSTSCRIPT_OPERATOR(CurrentdictOperator, "currentdict");
// - cleardictstack -
POSTSCRIPT_OPERATOR(CleardictstackOperator, "cleardictstack");

void addDictionaryOperators(OperatorRegistry& registry);

}  // namespace postscript
