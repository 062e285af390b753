// Paths. Coordinates are written in user space, as the program gives them. The path itself is kept
// nowhere but in the text.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/painting/Postscript2Pdf.h"

namespace postscript {

// x y moveto -      (remembered, and written when a segment follows)
PAINTING_OPERATOR(MovetoOperator, "moveto");
// dx dy rmoveto -
PAINTING_OPERATOR(RmovetoOperator, "rmoveto");
// x y lineto -
PAINTING_OPERATOR(LinetoOperator, "lineto");
// dx dy rlineto -
PAINTING_OPERATOR(RlinetoOperator, "rlineto");
// x1 y1 x2 y2 x3 y3 curveto -
PAINTING_OPERATOR(CurvetoOperator, "curveto");
// dx1 dy1 dx2 dy2 dx3 dy3 rcurveto -
PAINTING_OPERATOR(RcurvetoOperator, "rcurveto");
// - closepath -
PAINTING_OPERATOR(ClosepathOperator, "closepath");
// - newpath -      (does nothing: the path goes on)
PAINTING_OPERATOR(NewpathOperator, "newpath");
// - currentpoint x y
PAINTING_OPERATOR(CurrentpointOperator, "currentpoint");
// - stroke -
PAINTING_OPERATOR(StrokeOperator, "stroke");
// - fill -
PAINTING_OPERATOR(FillOperator, "fill");
// - eofill -
PAINTING_OPERATOR(EofillOperator, "eofill");
// - clip -
PAINTING_OPERATOR(ClipOperator, "clip");
// - eoclip -
PAINTING_OPERATOR(EoclipOperator, "eoclip");
// - clippath -      (as clip)
PAINTING_OPERATOR(ClippathOperator, "clippath");
// x y width height rectclip -
PAINTING_OPERATOR(RectclipOperator, "rectclip");
// - initclip -      (does nothing)
PAINTING_OPERATOR(InitclipOperator, "initclip");

void addPathOperators(OperatorRegistry& registry, Postscript2Pdf* converter);

}  // namespace postscript
