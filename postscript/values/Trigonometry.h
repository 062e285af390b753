// Sine, cosine and arc tangent, with the same results on all systems: pages show their last bits.
// glibc has them for every argument, to within little more than half a unit of the last bit.
// MinGW's sine and cosine are the processor's, whose pi has 66 bits: great arguments and results
// near zero have wrong bits, and are computed in integers instead. Its arc tangent is that of a DLL
// of the system.
#pragma once

#include <cmath>

namespace postscript {

struct SineAndCosine {
  double sine, cosine;
};

// Correctly rounded in all but a few of a million cases, whatever precision the processor is set
// to.
SineAndCosine sineAndCosineInIntegers(double x);

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

SineAndCosine sineAndCosine(double x);

inline double sine(double x) {
  return sineAndCosine(x).sine;
}

inline double cosine(double x) {
  return sineAndCosine(x).cosine;
}

// The processor's own, which is right more often than the DLL's.
inline double arcTangent(double x) {
  return std::atan2(x, 1.0);
}

#endif

}  // namespace postscript
