// What the read operators make of the input's bytes. Both work on a range in its place and 16 or 32
// bytes at a time, with the instructions that every 64-bit x86 has; what does not fill such a block
// goes byte by byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "postscript/values/Text.h"

namespace postscript {

inline constexpr int32_t noDigit = -1;

// Appends bytes, two hexadecimal digits each, until the text has `target` bytes or the input ends.
// Anything else in the input is passed over. pendingDigit: a first digit whose second has not come
// yet, or noDigit. Returns how much of the input was read: up to the last digit that was needed.
size_t appendHexBytes(std::string_view input, size_t target, int32_t& pendingDigit, Text& text);

// Appends bytes but blanks, tabs and line ends in the same way.
size_t appendWithoutSpace(std::string_view input, size_t target, Text& text);

}  // namespace postscript
