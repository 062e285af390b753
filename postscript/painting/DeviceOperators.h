// Device parameters, which have no meaning in PDF. Setting one takes the operands and does nothing;
// asking for one has a fixed answer.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/painting/Postscript2Pdf.h"

namespace postscript {

// boolean setstrokeadjust -
PAINTING_OPERATOR(SetstrokeadjustOperator, "setstrokeadjust");
// - currentstrokeadjust true
PAINTING_OPERATOR(CurrentstrokeadjustOperator, "currentstrokeadjust");
// any setflat -
PAINTING_OPERATOR(SetflatOperator, "setflat");
// - currentflat 0.2
PAINTING_OPERATOR(CurrentflatOperator, "currentflat");
// any setoverprint -
PAINTING_OPERATOR(SetoverprintOperator, "setoverprint");
// - currentoverprint false
PAINTING_OPERATOR(CurrentoverprintOperator, "currentoverprint");
// any any any setscreen -
PAINTING_OPERATOR(SetscreenOperator, "setscreen");
// any.. setcolorscreen -      (twelve)
PAINTING_OPERATOR(SetcolorscreenOperator, "setcolorscreen");
// any sethalftone -
PAINTING_OPERATOR(SethalftoneOperator, "sethalftone");
// - currenthalftone dict
PAINTING_OPERATOR(CurrenthalftoneOperator, "currenthalftone");
// proc settransfer -
PAINTING_OPERATOR(SettransferOperator, "settransfer");
// - currenttransfer proc      (empty)
PAINTING_OPERATOR(CurrenttransferOperator, "currenttransfer");
// proc proc proc proc setcolortransfer -
PAINTING_OPERATOR(SetcolortransferOperator, "setcolortransfer");
// - currentcolortransfer proc proc proc proc
PAINTING_OPERATOR(CurrentcolortransferOperator, "currentcolortransfer");
// - showpage -      (does nothing: pages are the caller's)
PAINTING_OPERATOR(ShowpageOperator, "showpage");
// string print -      (to the interpreter's print buffer)
PAINTING_OPERATOR(PrintOperator, "print");

void addDeviceOperators(OperatorRegistry& registry, Postscript2Pdf* converter);

}  // namespace postscript
