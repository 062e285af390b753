// Stencil masks. The samples must be at hand when the operator runs: nothing is fetched.
#ifndef POSTSCRIPT_LIB_PAINTING_MASKOPERATORS_H
#define POSTSCRIPT_LIB_PAINTING_MASKOPERATORS_H

#include "postscript/lib/Postscript2Pdf.h"

namespace postscript {

// width height polarity matrix name|array|string imagemask -
PAINTING_OPERATOR(ImagemaskOperator, "imagemask");

}  // namespace postscript

#endif
