#include "postscript/operators/EncodedBytes.h"

#include <emmintrin.h>

#include <algorithm>
#include <array>
#include <bit>

namespace postscript {

namespace {

constexpr auto digitTable = [] {
  std::array<int8_t, 256> table{};
  table.fill(noDigit);
  for (int8_t i = 0; i < 16; ++i) {
    table[static_cast<uint8_t>("0123456789abcdef"[i])] = i;
    table[static_cast<uint8_t>("0123456789ABCDEF"[i])] = i;
  }
  return table;
}();

struct Digits {
  __m128i values;
  uint32_t mask;  // a bit for each byte that is a digit
};

Digits digitsOf(const char* bytes) {
  const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
  const __m128i number = _mm_sub_epi8(text, _mm_set1_epi8('0'));
  const __m128i isNumber = _mm_cmpeq_epi8(_mm_min_epu8(number, _mm_set1_epi8(9)), number);
  const __m128i letter =
      _mm_sub_epi8(_mm_or_si128(text, _mm_set1_epi8('a' ^ 'A')), _mm_set1_epi8('a'));
  const __m128i isLetter = _mm_cmpeq_epi8(_mm_min_epu8(letter, _mm_set1_epi8(5)), letter);
  const __m128i values =
      _mm_or_si128(_mm_and_si128(number, isNumber),
                   _mm_and_si128(_mm_add_epi8(letter, _mm_set1_epi8(10)), isLetter));
  return {values, static_cast<uint32_t>(_mm_movemask_epi8(_mm_or_si128(isNumber, isLetter)))};
}

// Each pair of digits as a 16-bit lane of one byte's value.
__m128i pairs(__m128i digits) {
  return _mm_or_si128(_mm_and_si128(_mm_slli_epi16(digits, 4), _mm_set1_epi16(0xf0)),
                      _mm_srli_epi16(digits, 8));
}

constexpr size_t blockDigits = 32;
constexpr size_t blockBytes = 16;

// Makes 16 bytes of 32 digits. Returns how many digits there are before the first other byte; the
// bytes made of what follows it count for nothing.
size_t decodeBlock(const char* in, char* out) {
  const Digits low = digitsOf(in);
  const Digits high = digitsOf(in + blockDigits / 2);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out),
                   _mm_packus_epi16(pairs(low.values), pairs(high.values)));
  return static_cast<size_t>(std::countr_one(low.mask | high.mask << 16));
}

struct Range {
  const char* in;
  const char* inEnd;
  char* out;
  char* outEnd;
};

// Until the input or the room is used up.
void decode(Range& range, int32_t& pendingDigit) {
  while (range.in < range.inEnd && range.out < range.outEnd) {
    if (pendingDigit == noDigit && range.inEnd - range.in >= ptrdiff_t{blockDigits} &&
        range.outEnd - range.out >= ptrdiff_t{blockBytes}) {
      const size_t digits = decodeBlock(range.in, range.out);
      range.in += digits & ~size_t{1};
      range.out += digits / 2;
      if (digits == blockDigits) {
        continue;
      }
    }
    const int32_t digit = digitTable[static_cast<uint8_t>(*range.in++)];
    if (digit == noDigit) {
      continue;
    }
    if (pendingDigit == noDigit) {
      pendingDigit = digit;
    } else {
      *range.out++ = static_cast<char>(pendingDigit * 16 + digit);
      pendingDigit = noDigit;
    }
  }
}

// The first blank, tab or line end, or the end.
const char* findSpace(const char* at, const char* end) {
  const auto isSpace = [](char c) { return c == '\r' || c == '\n' || c == '\t' || c == ' '; };
  for (; end - at >= 16; at += 16) {
    const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const auto equals = [&](char c) { return _mm_cmpeq_epi8(text, _mm_set1_epi8(c)); };
    const int mask = _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(equals('\r'), equals('\n')),
                                                    _mm_or_si128(equals('\t'), equals(' '))));
    if (mask != 0) {
      return at + std::countr_zero(static_cast<uint32_t>(mask));
    }
  }
  return std::find_if(at, end, isSpace);
}

}  // namespace

size_t appendHexBytes(std::string_view input, size_t target, int32_t& pendingDigit, Text& text) {
  std::array<char, 4096> decoded;
  const char* const end = input.data() + input.size();
  const char* in = input.data();
  text.reserve(text.size() + std::min(target - text.size(), input.size() / 2 + 1));
  while (text.size() < target && in < end) {
    const size_t room = std::min(decoded.size(), target - text.size());
    Range range{in, end, decoded.data(), decoded.data() + room};
    decode(range, pendingDigit);
    text.append(decoded.data(), range.out);
    in = range.in;
  }
  return static_cast<size_t>(in - input.data());
}

size_t appendWithoutSpace(std::string_view input, size_t target, Text& text) {
  const char* const end = input.data() + input.size();
  const char* in = input.data();
  text.reserve(text.size() + std::min(target - text.size(), input.size()));
  while (text.size() < target && in < end) {
    const auto most = std::min(target - text.size(), static_cast<size_t>(end - in));
    const char* const space = findSpace(in, in + most);
    text.append(in, space);
    // Past the space itself, which is read with the byte that it precedes.
    in = space == in + most ? space : space + 1;
  }
  return static_cast<size_t>(in - input.data());
}

}  // namespace postscript
