// Geometry: the two shapes that the caller hands around, both in PDF's order and units.
#pragma once

#include <array>
#include <string>

namespace quillpress {

// a b c d e f: a point x y goes to ax+cy+e, bx+dy+f.
using Matrix = std::array<double, 6>;

constexpr Matrix identity{1, 0, 0, 1, 0, 0};

// The matrix that does what `first` does and then what `second` does.
constexpr Matrix multiply(const Matrix& first, const Matrix& second) {
  return {first[0] * second[0] + first[1] * second[2],
          first[0] * second[1] + first[1] * second[3],
          first[2] * second[0] + first[3] * second[2],
          first[2] * second[1] + first[3] * second[3],
          first[4] * second[0] + first[5] * second[2] + second[4],
          first[4] * second[1] + first[5] * second[3] + second[5]};
}

// The six numbers as a content stream has them, each with a blank after it.
std::string matrixText(const Matrix& matrix);

// A rectangle in points, the left below the right and the bottom below the top.
struct Box {
  double left;
  double bottom;
  double right;
  double top;
};

constexpr Box letter{0, 0, 612, 792};
constexpr Box a4{0, 0, 595, 842};

}  // namespace quillpress
