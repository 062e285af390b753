// ByteScan: how far a run of bytes goes that has none of a few others in it. Strings and comments
// are mostly such runs; sixteen bytes are compared at a time.
#pragma once

#include <emmintrin.h>

#include <bit>

namespace postscript {

// The first of four bytes, or the end. The same byte may be given more than once.
template <char a, char b, char c, char d>
const char* findAnyOf(const char* at, const char* end) {
  const __m128i wanted[] = {_mm_set1_epi8(a), _mm_set1_epi8(b), _mm_set1_epi8(c), _mm_set1_epi8(d)};
  for (; end - at >= 16; at += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const __m128i found = _mm_or_si128(
        _mm_or_si128(_mm_cmpeq_epi8(bytes, wanted[0]), _mm_cmpeq_epi8(bytes, wanted[1])),
        _mm_or_si128(_mm_cmpeq_epi8(bytes, wanted[2]), _mm_cmpeq_epi8(bytes, wanted[3])));
    if (const int mask = _mm_movemask_epi8(found)) {
      return at + std::countr_zero(static_cast<unsigned>(mask));
    }
  }
  while (at != end && *at != a && *at != b && *at != c && *at != d) {
    ++at;
  }
  return at;
}

}  // namespace postscript
