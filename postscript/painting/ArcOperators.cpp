// An arc is walked from quarter to quarter of the angle scale, whose borders are the multiples of
// 90 degrees, wherever it begins; each piece is written as one curve. The order of the arithmetic
// is that of the last bits that pages have always had: it must stay as it is.
#include "postscript/painting/ArcOperators.h"

#include <cmath>

#include "postscript/engine/Operands.h"
#include "postscript/values/Limits.h"
#include "postscript/values/Trigonometry.h"

namespace postscript {

namespace {

void checkAngles(const ArcSpec& arc) {
  if (std::fabs(arc.firstAngle) > limits::arcAngle ||
      std::fabs(arc.secondAngle) > limits::arcAngle) {
    throw Ex("Postscript2Pdf", 905, "arc angle out of range");
  }
}

// One curve, from one angle to another. `first` says that the arc begins with it.
void arcSegment(Postscript2Pdf& converter, const ArcSpec& arc, double from, double to, bool first) {
  const ArcPiece& piece = converter.arcPieces.between(from, to);
  const double r = arc.radius;
  const double rc = r * piece.controlRadius;
  const double cx = arc.centerX;
  const double cy = arc.centerY;

  GraphicsState& state = converter.topState();
  const bool pathOpen = state.pathOpen;
  state.currentX = piece.start.x * r + cx;
  state.currentY = piece.start.y * r + cy;
  if (!pathOpen) {
    converter.writePoint('m');
  } else if (first) {
    converter.writePoint('l');
  }
  const double endX = piece.end.x * r + cx;
  const double endY = piece.end.y * r + cy;
  converter.writeCurve(piece.startControl.x * rc + cx, piece.startControl.y * rc + cy,
                       piece.endControl.x * rc + cx, piece.endControl.y * rc + cy, endX, endY);
  state.currentX = endX;
  state.currentY = endY;
}

}  // namespace

// The walk begins one quarter early: the cut toward zero puts a negative angle into the quarter
// after its own.
void arcCounterClockwise(Postscript2Pdf& converter, ArcSpec& arc) {
  checkAngles(arc);
  while (arc.firstAngle > arc.secondAngle) {
    arc.secondAngle += 360;
  }
  if (!(arc.secondAngle > arc.firstAngle)) {
    return;
  }
  double b = 90 * (toInt32(arc.firstAngle) / 90) - 90;
  double cur = arc.firstAngle;
  bool first = true;
  do {
    const double next = b + 90;
    if (cur >= b && next > cur) {
      if (next > arc.secondAngle) {
        return arcSegment(converter, arc, cur, arc.secondAngle, first);
      }
      arcSegment(converter, arc, cur, next, first);
      first = false;
      cur = next;
    }
    b = next;
  } while (arc.secondAngle > cur);
}

// The mirror image, from a border above the first angle down.
void arcClockwise(Postscript2Pdf& converter, ArcSpec& arc) {
  checkAngles(arc);
  while (arc.secondAngle > arc.firstAngle) {
    arc.secondAngle -= 360;
  }
  if (!(arc.firstAngle > arc.secondAngle)) {
    return;
  }
  double b = 90 * (toInt32(arc.firstAngle) / 90 + 1);
  double cur = arc.firstAngle;
  bool first = true;
  do {
    if (cur > b && b + 90 >= cur) {
      if (arc.secondAngle >= b) {
        return arcSegment(converter, arc, cur, arc.secondAngle, first);
      }
      arcSegment(converter, arc, cur, b, first);
      first = false;
      cur = b;
    }
    b -= 90;
  } while (cur > arc.secondAngle);
}

void Arcer::popArc(Interpreter& ps) {
  arc_.secondAngle = popNumber(ps);
  arc_.firstAngle = popNumber(ps);
  arc_.radius = popNumber(ps);
  arc_.centerY = popNumber(ps);
  arc_.centerX = popNumber(ps);
}

void Arcter::popCorner(Interpreter& ps, const GraphicsState& state) {
  radius_ = popNumber(ps);
  y2_ = popNumber(ps);
  x2_ = popNumber(ps);
  y1_ = popNumber(ps);
  x1_ = popNumber(ps);
  x_ = state.currentX;
  y_ = state.currentY;
}

// The arc that touches both legs of the corner: a leads from the corner back to the current point,
// b on to the end of the second leg.
void Arcter::writeTangentArc(Postscript2Pdf& converter) {
  const double ax = x_ - x1_;
  const double ay = y_ - y1_;
  const double bx = x2_ - x1_;
  const double by = y2_ - y1_;
  const double la = ax * ax + ay * ay;
  const double lb = bx * bx + by * by;
  const double w = std::sqrt(lb * la) - (ay * by + ax * bx);
  if (w == 0) {
    converter.topState().currentX = x1_;
    converter.topState().currentY = y1_;
    converter.writePoint('l');
    return;
  }
  const double t = std::fabs((ay * bx - ax * by) * radius_ / w);
  const double sign = radius_ < 0 ? -1 : 1;
  const double ta = sign * (t / std::sqrt(la));
  const double tb = sign * (t / std::sqrt(lb));
  xt1_ = ta * ax + x1_;
  yt1_ = ta * ay + y1_;
  xt2_ = tb * bx + x1_;
  yt2_ = tb * by + y1_;
  const double firstLegAngle = std::atan2(ay, ax);
  double turn = std::atan2(by, bx) - firstLegAngle;
  if (turn > pi) {
    turn -= twoPi;
  } else if (turn < -pi) {
    turn += twoPi;
  }
  writeArcBetween(converter, firstLegAngle, turn);
}

// The arc between the tangent points, about the centre on the line that halves the corner.
void Arcter::writeArcBetween(Postscript2Pdf& converter, double firstLegAngle, double turn) const {
  const double ux = xt1_ - x1_;
  const double uy = yt1_ - y1_;
  const double u = std::sqrt(ux * ux + uy * uy);
  const double g = std::sqrt(radius_ * radius_ + u * u);
  const auto [s, c] = sineAndCosine(turn * 0.5 + firstLegAngle);
  const double cx = c * g + x1_;
  const double cy = s * g + y1_;
  ArcSpec arc{cx, cy, radius_, std::atan2(yt1_ - cy, xt1_ - cx) * 180 / pi,
              std::atan2(yt2_ - cy, xt2_ - cx) * 180 / pi};
  if (turn >= 0) {
    arcClockwise(converter, arc);
  } else {
    arcCounterClockwise(converter, arc);
  }
}

void ArcOperator::execute(Interpreter& ps) {
  converter->flushMoveto();
  popArc(ps);
  arcCounterClockwise(*converter, arc_);
}

void ArcnOperator::execute(Interpreter& ps) {
  converter->flushMoveto();
  popArc(ps);
  arcClockwise(*converter, arc_);
}

void ArctOperator::execute(Interpreter& ps) {
  converter->flushMoveto();
  popCorner(ps, converter->topState());
  writeTangentArc(*converter);
}

void ArctoOperator::execute(Interpreter& ps) {
  converter->flushMoveto();
  popCorner(ps, converter->topState());
  writeTangentArc(*converter);
  for (const double coordinate : {xt1_, yt1_, xt2_, yt2_}) {
    pushReal(ps, coordinate);
  }
}

void addArcOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<ArcOperator>(converter);
  registry.add<ArcnOperator>(converter);
  registry.add<ArctOperator>(converter);
  registry.add<ArctoOperator>(converter);
}

}  // namespace postscript
