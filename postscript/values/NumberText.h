// Numbers as text, by rules that depend on neither locale nor platform.
#pragma once

#include <cstddef>
#include <string>

namespace postscript {

// The longest text of a number, and what its writer may overwrite after it.
inline constexpr size_t mostNumberText = 352;

// Writes a number as content texts have it, with the fewer decimals the larger it is and without
// trailing zeros; returns where the text ends. There must be room for `mostNumberText` bytes.
char* formatNumber(char* at, double value);
// The same, at the end of a text.
void formatNumber(std::string& text, double value);

// Appends the exact decimal value, rounded to so many decimals with ties to even, as "%.Nf" does;
// "inf", "-inf" and "nan".
void appendFixed(std::string& text, double value, int decimals);

}  // namespace postscript
