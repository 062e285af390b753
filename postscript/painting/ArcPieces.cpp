#include "postscript/painting/ArcPieces.h"

#include <bit>
#include <cmath>
#include <cstdint>

#include "postscript/values/NumberUtils.h"

namespace postscript {

namespace {

// By their bits: a sine tells a negative zero from a positive one.
bool same(double a, double b) {
  return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
}

}  // namespace

ArcPiece::ArcPiece(double fromAngle, double toAngle) : from(fromAngle), to(toAngle) {
  const double a1 = from * pi / 180;
  const double a2 = to * pi / 180;
  const double h = (a2 - a1) * 0.5;
  // The first control point of a unit arc of half-angle h about the arc's axis, then in polar form.
  const double c = std::cos(h);
  const double p = (4 - c) / 3;
  const double q = -(1 - c) * (c - 3) / (3 * std::sin(h));
  const double d = h - std::atan(q / p);
  controlRadius = std::sqrt(p * p + q * q);
  start = {std::cos(a1), std::sin(a1)};
  startControl = {std::cos(a1 + d), std::sin(a1 + d)};
  endControl = {std::cos(a2 - d), std::sin(a2 - d)};
  end = {std::cos(a2), std::sin(a2)};
}

const ArcPiece& ArcPieces::between(double from, double to) {
  const double turn = to - from;
  if (turn != 90 && turn != -90) {
    return other_ = ArcPiece(from, to);
  }
  // Neighbouring quarters, and the two directions of each, have slots of their own.
  const auto quarter = static_cast<uint32_t>(toInt32(from) / 90);
  ArcPiece& piece = quarters_[(quarter * 2 + (turn > 0)) % slots];
  if (!same(piece.from, from) || !same(piece.to, to)) {
    piece = ArcPiece(from, to);
  }
  return piece;
}

}  // namespace postscript
