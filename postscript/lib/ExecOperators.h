// exec.
#ifndef POSTSCRIPT_LIB_EXECOPERATORS_H
#define POSTSCRIPT_LIB_EXECOPERATORS_H

#include "postscript/lib/NameObject.h"

namespace postscript {

// any exec -
POSTSCRIPT_OPERATOR(ExecOperator, "exec");

}  // namespace postscript

#endif
