#include "postscript/values/NumberText.h"

#include <charconv>
#include <cmath>

namespace postscript {

void appendFixed(std::string& text, double value, int decimals) {
  if (std::isnan(value)) {
    text += "nan";
    return;
  }
  // The longest finite double has 309 digits in front of the point.
  char digits[352];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
  text.append(digits, end.ptr);
}

}  // namespace postscript
