// The dictionary stack, and what is defined in it.
#ifndef POSTSCRIPT_LIB_BEGINOPERATOR_H
#define POSTSCRIPT_LIB_BEGINOPERATOR_H

#include "postscript/lib/NameObject.h"

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

}  // namespace postscript

#endif
