// WideText: the few things that the front end does with UTF-16 text, alike on every platform and in
// every locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace umpd {

// Case folds in the manner of ASCII: `A` to `Z` to lower case, and nothing else.
std::u16string foldCase(std::u16string_view text);
bool equalsIgnoringCase(std::u16string_view a, std::u16string_view b);

std::u16string decimalText(uint32_t value);

// The leading decimal digits, after white space and a sign, modulo 2^32; 0 without a digit.
uint32_t decimalValue(std::u16string_view text);

// Registry keys, sections and port forms cannot hold a backslash: a comma stands for it.
std::u16string withCommas(std::u16string_view name);

}  // namespace umpd
