// ArcPieces: what a piece of an arc needs besides its centre and radius. An arc is cut at the
// multiples of 90 degrees, so that most pieces of a page, all those of full circles, lie between
// the same angles again and again. Such quarters are kept. A kept piece has the very numbers that
// computing it again would give.
#pragma once

#include <array>
#include <cstddef>

namespace postscript {

// One Bezier curve about the origin. Directions are those of the end points and, further out by a
// factor, of the control points.
struct ArcPiece {
  struct Direction {
    double x = 0, y = 0;
  };

  ArcPiece() = default;
  // The angles are in degrees and not the same; the directions are theirs.
  ArcPiece(double fromAngle, double toAngle, Direction fromDirection, Direction toDirection);

  double from = 0, to = 0;
  Direction start, startControl, endControl, end;
  double controlRadius = 0;  // for a radius of 1
};

class ArcPieces {
 public:
  // Valid until the next one is asked for.
  const ArcPiece& between(double from, double to);

 private:
  static constexpr size_t slots = 32;
  struct Border {
    double angle = 0.5;  // none yet
    ArcPiece::Direction direction;
  };

  ArcPiece::Direction directionAt(double angle);

  std::array<Border, slots> borders_;  // multiples of 90 degrees
  std::array<ArcPiece, slots> quarters_;
  ArcPiece other_;  // a piece that is no quarter
};

}  // namespace postscript
