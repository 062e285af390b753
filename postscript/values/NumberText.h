// Numbers as text, by rules that depend on neither locale nor platform.
#pragma once

#include <string>

namespace postscript {

// Appends the exact decimal value, rounded to so many decimals with ties to even, as "%.Nf" does;
// "inf", "-inf" and "nan".
void appendFixed(std::string& text, double value, int decimals);

}  // namespace postscript
