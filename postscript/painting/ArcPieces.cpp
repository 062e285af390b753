#include "postscript/painting/ArcPieces.h"

#include <bit>
#include <cmath>
#include <cstdint>

#include "postscript/values/NumberUtils.h"
#include "postscript/values/Trigonometry.h"

namespace postscript {

namespace {

// By their bits: a sine tells a negative zero from a positive one.
bool same(double a, double b) {
  return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
}

ArcPiece::Direction directionOf(double angle) {
  const SineAndCosine point = sineAndCosine(angle);
  return {point.cosine, point.sine};
}

}  // namespace

ArcPiece::ArcPiece(double fromAngle, double toAngle, Direction fromDirection, Direction toDirection)
    : from(fromAngle), to(toAngle), start(fromDirection), end(toDirection) {
  const double a1 = from * pi / 180;
  const double a2 = to * pi / 180;
  const double h = (a2 - a1) * 0.5;
  // The first control point of a unit arc of half-angle h about the arc's axis, then in polar form.
  const auto [s, c] = sineAndCosine(h);
  const double p = (4 - c) / 3;
  const double q = -(1 - c) * (c - 3) / (3 * s);
  const double d = h - arcTangent(q / p);
  controlRadius = std::sqrt(p * p + q * q);
  startControl = directionOf(a1 + d);
  endControl = directionOf(a2 - d);
}

ArcPiece::Direction ArcPieces::directionAt(double angle) {
  const int32_t quarter = toInt32(angle) / 90;
  if (quarter * 90.0 != angle) {
    return directionOf(angle * pi / 180);
  }
  Border& border = borders_[static_cast<uint32_t>(quarter) % slots];
  if (!same(border.angle, angle)) {
    border = {angle, directionOf(angle * pi / 180)};
  }
  return border.direction;
}

const ArcPiece& ArcPieces::between(double from, double to) {
  const double turn = to - from;
  if (turn != 90 && turn != -90) {
    return other_ = ArcPiece(from, to, directionAt(from), directionAt(to));
  }
  // Neighbouring quarters, and the two directions of each, have slots of their own.
  const auto quarter = static_cast<uint32_t>(toInt32(from) / 90);
  ArcPiece& piece = quarters_[(quarter * 2 + (turn > 0)) % slots];
  if (!same(piece.from, from) || !same(piece.to, to)) {
    piece = ArcPiece(from, to, directionAt(from), directionAt(to));
  }
  return piece;
}

}  // namespace postscript
