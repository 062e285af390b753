// Stencil masks. The samples must be at hand when the operator runs: nothing is fetched.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/painting/Postscript2Pdf.h"

namespace postscript {

// width height polarity matrix name|array|string imagemask -
PAINTING_OPERATOR(ImagemaskOperator, "imagemask");

void addMaskOperators(OperatorRegistry& registry, Postscript2Pdf* converter);

}  // namespace postscript
