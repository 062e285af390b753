// Where a program's own numbers would ask for more than a process can give, or would keep the
// library busy without end, the request fails with a message instead.
#pragma once

#include <cstddef>
#include <cstdint>

namespace postscript::limits {

// Turns of the engine in a run: no limit, but for fuzzers, whose programs must come to an end.
#ifdef FUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION
inline constexpr uint64_t engineTurns = 20000;
#else
inline constexpr uint64_t engineTurns = UINT64_MAX;
#endif
// Elements of an array that is made by its size.
inline constexpr int32_t arrayElements = 1 << 22;
// Bytes of a string, however it comes about.
inline constexpr size_t stringBytes = size_t{1} << 29;
// Bytes of the text of one printed array.
inline constexpr size_t printedText = size_t{1} << 28;
// How deep arrays and dictionaries may be nested for printing and comparing.
inline constexpr int nesting = 500;
// Degrees of an arc's angle.
inline constexpr double arcAngle = 1e6;
// Turns of a hue that are counted one by one.
inline constexpr double hue = 1e6;

}  // namespace postscript::limits
