#include "tools/quillpress/Geometry.h"

#include <charconv>

namespace quillpress {

std::string matrixText(const Matrix& matrix) {
  constexpr int decimals = 6;
  std::string text;
  for (const double number : matrix) {
    std::array<char, 400> room;
    const char* const end = std::to_chars(room.data(), room.data() + room.size(), number,
                                          std::chars_format::fixed, decimals)
                                .ptr;
    text.append(static_cast<const char*>(room.data()), end);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) {
      text.pop_back();
    }
    text += ' ';
  }
  return text;
}

}  // namespace quillpress
