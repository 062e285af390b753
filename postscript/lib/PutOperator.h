// Access to the elements of composite objects.
#ifndef POSTSCRIPT_LIB_PUTOPERATOR_H
#define POSTSCRIPT_LIB_PUTOPERATOR_H

#include "postscript/lib/NameObject.h"

namespace postscript {

// dict name value put -; array index value put -      (the index behind the last appends);
// string index integer put -      (stores the low byte of the index)
POSTSCRIPT_OPERATOR(PutOperator, "put");
// dict name get value; array index get value; string index get byte      (sign-extended)
POSTSCRIPT_OPERATOR(GetOperator, "get");

}  // namespace postscript

#endif
