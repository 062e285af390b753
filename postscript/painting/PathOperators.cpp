// Each operator moves the current point and writes its line. lineto, curveto and rcurveto write a
// remembered moveto before they look at their operands, rlineto after: that shows when an operand
// is wrong.
#include "postscript/painting/PathOperators.h"

#include "postscript/engine/Operands.h"
#include "postscript/generated/OperatorRows.h"

namespace postscript {

namespace {

struct CurvePoints {
  double x1, y1, x2, y2, x3, y3;
};

CurvePoints popCurve(Interpreter& ps) {
  CurvePoints points;
  points.y3 = popNumber(ps);
  points.x3 = popNumber(ps);
  points.y2 = popNumber(ps);
  points.x2 = popNumber(ps);
  points.y1 = popNumber(ps);
  points.x1 = popNumber(ps);
  return points;
}

void setPoint(GraphicsState& state, double x, double y) {
  state.currentX = x;
  state.currentY = y;
}

void writeCurveTo(Postscript2Pdf& converter, const CurvePoints& p) {
  converter.writeCurve(p.x1, p.y1, p.x2, p.y2, p.x3, p.y3);
  setPoint(converter.topState(), p.x3, p.y3);
}

}  // namespace

void MovetoOperator::execute(Interpreter& ps) {
  const double y = popNumber(ps);
  const double x = popNumber(ps);
  setPoint(converter->topState(), x, y);
  converter->pendingMoveto = true;
}

void RmovetoOperator::execute(Interpreter& ps) {
  const double dy = popNumber(ps);
  const double dx = popNumber(ps);
  GraphicsState& state = converter->topState();
  setPoint(state, state.currentX + dx, state.currentY + dy);
  converter->pendingMoveto = true;
}

void LinetoOperator::execute(Interpreter& ps) {
  converter->flushMoveto();
  const double y = popNumber(ps);
  const double x = popNumber(ps);
  setPoint(converter->topState(), x, y);
  converter->writePoint('l');
}

void RlinetoOperator::execute(Interpreter& ps) {
  const double dy = popNumber(ps);
  const double dx = popNumber(ps);
  converter->flushMoveto();
  GraphicsState& state = converter->topState();
  setPoint(state, state.currentX + dx, state.currentY + dy);
  converter->writePoint('l');
}

void CurvetoOperator::execute(Interpreter& ps) {
  converter->flushMoveto();
  writeCurveTo(*converter, popCurve(ps));
}

void RcurvetoOperator::execute(Interpreter& ps) {
  converter->flushMoveto();
  CurvePoints points = popCurve(ps);
  const GraphicsState& state = converter->topState();
  for (double* x : {&points.x1, &points.x2, &points.x3}) {
    *x += state.currentX;
  }
  for (double* y : {&points.y1, &points.y2, &points.y3}) {
    *y += state.currentY;
  }
  writeCurveTo(*converter, points);
}

// The current point stays at the end of the subpath: its start is not kept.
void ClosepathOperator::execute(Interpreter&) {
  converter->write("h ");
  converter->topState().pathOpen = false;
}

void NewpathOperator::execute(Interpreter&) {}

void CurrentpointOperator::execute(Interpreter& ps) {
  pushReal(ps, converter->topState().currentX);
  pushReal(ps, converter->topState().currentY);
}

void StrokeOperator::execute(Interpreter&) {
  converter->write("S ");
  converter->topState().pathOpen = false;
}

void FillOperator::execute(Interpreter&) {
  converter->write("f\n");
  converter->topState().pathOpen = false;
}

void EofillOperator::execute(Interpreter&) {
  converter->write("f*\n");
  converter->topState().pathOpen = false;
}

void ClipOperator::execute(Interpreter&) {
  converter->writeClip("W n ");
  converter->topState().pathOpen = false;
}

void EoclipOperator::execute(Interpreter&) {
  converter->writeClip("W* n ");
  converter->topState().pathOpen = false;
}

void ClippathOperator::execute(Interpreter&) {
  converter->writeClip("W n ");
  converter->topState().pathOpen = false;
}

void RectclipOperator::execute(Interpreter& ps) {
  const double height = popNumber(ps);
  const double width = popNumber(ps);
  const double y = popNumber(ps);
  const double x = popNumber(ps);
  if (width < 0 || height < 0) {
    throw Ex("Postscript2Pdf", 702, "Negative widths or height not supported by rectclip");
  }
  setPoint(converter->topState(), x, y);
  converter->write(x, " ", y, " ", width, " ", height, " re W n\n");
  converter->topState().pathOpen = false;
}

void InitclipOperator::execute(Interpreter& ps) {
  reportIgnored(ps, OperatorRow::Initclip);
}

void addPathOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<InitclipOperator>(converter);
  registry.add<EoclipOperator>(converter);
  registry.add<ClipOperator>(converter);
  registry.add<ClippathOperator>(converter);
  registry.add<RectclipOperator>(converter);
  registry.add<StrokeOperator>(converter);
  registry.add<NewpathOperator>(converter);
  registry.add<FillOperator>(converter);
  registry.add<EofillOperator>(converter);
  registry.add<MovetoOperator>(converter);
  registry.add<RmovetoOperator>(converter);
  registry.add<LinetoOperator>(converter);
  registry.add<RlinetoOperator>(converter);
  registry.add<CurvetoOperator>(converter);
  registry.add<RcurvetoOperator>(converter);
  registry.add<CurrentpointOperator>(converter);
  registry.add<ClosepathOperator>(converter);
}

}  // namespace postscript
