// Coordinate systems. Each change is written as a step relative to the one before; the tracked
// matrix, the product of the steps, answers the questions that programs ask.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/painting/Postscript2Pdf.h"

namespace postscript {

// tx ty translate -; tx ty array translate array
PAINTING_OPERATOR(TranslateOperator, "translate");
// sx sy scale -; sx sy array scale array
PAINTING_OPERATOR(ScaleOperator, "scale");
// degrees rotate -; degrees array rotate array
PAINTING_OPERATOR(RotateOperator, "rotate");
// array concat -
PAINTING_OPERATOR(ConcatOperator, "concat");
// array setmatrix -
PAINTING_OPERATOR(SetmatrixOperator, "setmatrix");
// array currentmatrix array
PAINTING_OPERATOR(CurrentmatrixOperator, "currentmatrix");
// array defaultmatrix array      (the page's matrix)
PAINTING_OPERATOR(DefaultmatrixOperator, "defaultmatrix");

// transform, itransform and idtransform.
class Transformer : public Postscript2PdfObject {
 public:
  using Postscript2PdfObject::Postscript2PdfObject;

 protected:
  // delta: a distance, which no translation moves.
  void transform(Interpreter& ps, bool invert, bool delta);
};

// x y transform x' y'; x y array transform x' y'
PAINTING_OPERATOR_OF(TransformOperator, "transform", Transformer);
// x y itransform x' y'; x y array itransform x' y'
PAINTING_OPERATOR_OF(ItransformOperator, "itransform", Transformer);
// dx dy idtransform dx' dy'; dx dy array idtransform dx' dy'
PAINTING_OPERATOR_OF(IdtransformOperator, "idtransform", Transformer);
// dx dy dtransform dx' dy'; dx dy array dtransform x' y'      (an array's translation counts)
PAINTING_OPERATOR(DtransformOperator, "dtransform");

void addCoordinateOperators(OperatorRegistry& registry, Postscript2Pdf* converter);

}  // namespace postscript
