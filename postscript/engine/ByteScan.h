// ByteScan: how far a run of bytes goes that has none of a few others in it. Strings, comments and
// names are mostly such runs; sixteen bytes are compared at a time.
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

// How many of 16 bytes come before the first that is no letter, digit, hyphen, point or underscore:
// names are mostly made of these.
inline unsigned wordLength(const char* bytes) {
  const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
  const auto isAmong = [](__m128i values, char first, char count) {
    const __m128i place = _mm_sub_epi8(values, _mm_set1_epi8(first));
    return _mm_cmpeq_epi8(_mm_min_epu8(place, _mm_set1_epi8(static_cast<char>(count - 1))), place);
  };
  const __m128i lowerCase = _mm_or_si128(text, _mm_set1_epi8('a' ^ 'A'));
  const __m128i word =
      _mm_or_si128(_mm_or_si128(isAmong(lowerCase, 'a', 26), isAmong(text, '0', 10)),
                   _mm_or_si128(isAmong(text, '-', 2), _mm_cmpeq_epi8(text, _mm_set1_epi8('_'))));
  return static_cast<unsigned>(std::countr_one(static_cast<unsigned>(_mm_movemask_epi8(word))));
}

}  // namespace postscript
