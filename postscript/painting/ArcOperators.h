// Arcs. PDF has none: each becomes Bezier curves, one for each quarter of the full circle that it
// passes through.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/painting/Postscript2Pdf.h"

namespace postscript {

struct ArcSpec {
  double centerX = 0, centerY = 0, radius = 0;
  double firstAngle = 0, secondAngle = 0;  // in degrees
};

// Write an arc from the first angle to the second. The second is brought to the right side of the
// first by full turns, and stored so. Nothing is written for an arc of no length.
void arcCounterClockwise(Postscript2Pdf& converter, ArcSpec& arc);
void arcClockwise(Postscript2Pdf& converter, ArcSpec& arc);

// arc and arcn: the operands of the current execution.
class Arcer {
 protected:
  void popArc(Interpreter& ps);

  ArcSpec arc_;
};

// arct and arcto. The fields keep their values between executions: where the legs of the corner
// point the same way there are no new tangent points, and arcto answers with the previous ones.
class Arcter {
 protected:
  void popCorner(Interpreter& ps, const GraphicsState& state);
  void writeTangentArc(Postscript2Pdf& converter);

  double radius_ = 0;
  double x_ = 0, y_ = 0;      // the current point
  double x1_ = 0, y1_ = 0;    // the corner
  double x2_ = 0, y2_ = 0;    // the end of the second leg
  double xt1_ = 0, yt1_ = 0;  // where the arc touches the first leg
  double xt2_ = 0, yt2_ = 0;  // and the second

 private:
  void writeArcBetween(Postscript2Pdf& converter, double firstLegAngle, double turn) const;
};

// x y r angle1 angle2 arc -
PAINTING_OPERATOR_OF(ArcOperator, "arc", Postscript2PdfObject, Arcer);
// x y r angle1 angle2 arcn -
PAINTING_OPERATOR_OF(ArcnOperator, "arcn", Postscript2PdfObject, Arcer);
// x1 y1 x2 y2 r arct -
PAINTING_OPERATOR_OF(ArctOperator, "arct", Postscript2PdfObject, Arcter);
// x1 y1 x2 y2 r arcto xt1 yt1 xt2 yt2
PAINTING_OPERATOR_OF(ArctoOperator, "arcto", Postscript2PdfObject, Arcter);

void addArcOperators(OperatorRegistry& registry, Postscript2Pdf* converter);

}  // namespace postscript
