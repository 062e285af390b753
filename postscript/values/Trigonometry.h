// Trigonometry: sine, cosine and arc tangent, with the same results on all systems but for a last
// bit now and then, which a page shows in numbers of sixteen digits only.
//
// glibc has them for every argument, to within little more than half a unit of the last bit.
// MinGW's sine and cosine are the processor's, whose pi has 66 bits: great arguments and results
// near zero have wrong bits, and are computed in integers instead. Its arc tangent is that of a DLL
// of the system; a series takes its place.
#pragma once

#include <cmath>

namespace postscript {

struct SineAndCosine {
  double sine, cosine;
};

// Correctly rounded in all but a few of a million cases, whatever precision the processor has.
SineAndCosine sineAndCosineInIntegers(double x);

// Correctly rounded for all but a few in ten thousand of the small arguments of arcs;
// std::atan2(x, 1) for others.
double arcTangentBySeries(double x);

#ifdef __GLIBC__

inline double sine(double x) {
  return std::sin(x);
}

inline double cosine(double x) {
  return std::cos(x);
}

inline SineAndCosine sineAndCosine(double x) {
  return {std::sin(x), std::cos(x)};
}

inline double arcTangent(double x) {
  return std::atan(x);
}

#else

// Within a turn the processor's instructions do, unless the result is so small that the end of its
// pi shows; they take half the time.
inline SineAndCosine sineAndCosine(double x) {
  constexpr double turn = 7;
  constexpr double unreduced = 0.78;
  constexpr double least = 1.0 / 64;
  const double magnitude = std::fabs(x);
  if (magnitude < turn) {
    const SineAndCosine quick{std::sin(x), std::cos(x)};
    if (std::fabs(quick.sine * quick.cosine) > least || magnitude < unreduced) {
      return quick;
    }
  }
  return sineAndCosineInIntegers(x);
}

inline double sine(double x) {
  return sineAndCosine(x).sine;
}

inline double cosine(double x) {
  return sineAndCosine(x).cosine;
}

inline double arcTangent(double x) {
  return arcTangentBySeries(x);
}

#endif

}  // namespace postscript
