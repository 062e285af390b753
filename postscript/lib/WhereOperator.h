// Looking up.
#ifndef POSTSCRIPT_LIB_WHEREOPERATOR_H
#define POSTSCRIPT_LIB_WHEREOPERATOR_H

#include "postscript/lib/NameObject.h"

namespace postscript {

// key where dict true | false
POSTSCRIPT_OPERATOR(WhereOperator, "where");
// key load value
POSTSCRIPT_OPERATOR(LoadOperator, "load");
// dict key known boolean
POSTSCRIPT_OPERATOR(KnownOperator, "known");

}  // namespace postscript

#endif
