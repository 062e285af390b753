// The graphics state's stack. save and restore bracket the text alone: they undo nothing.
#ifndef POSTSCRIPT_LIB_PAINTING_STATEOPERATORS_H
#define POSTSCRIPT_LIB_PAINTING_STATEOPERATORS_H

#include "postscript/lib/Postscript2Pdf.h"

namespace postscript {

// - gsave -
PAINTING_OPERATOR(GsaveOperator, "gsave");
// - grestore -
PAINTING_OPERATOR(GrestoreOperator, "grestore");
// - save save
PAINTING_OPERATOR(SaveOperator, "save");
// any restore -
PAINTING_OPERATOR(RestoreOperator, "restore");

}  // namespace postscript

#endif
