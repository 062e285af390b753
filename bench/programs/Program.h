// Program: what a caller does with one converter or two at a time, as a list of calls. makeProgram
// invents one: PostScript by a grammar, with valid operands most of the time, cut into calls.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bench/programs/Choices.h"

namespace programs {

struct Call {
  enum class Kind {
    convert,     // the text, with its length
    convertNul,  // the text up to its first NUL, with a negative length
    startPage,   // a new page, with the matrix numbered `matrix`
  };
  Kind kind = Kind::convert;
  std::string text;
  uint32_t matrix = 0;
  bool secondConverter = false;
};

using Program = std::vector<Call>;

// The matrices that calls refer to by number; a converter opens with the first.
inline constexpr std::array<std::array<float, 6>, 4> matrices = {{
    {1, 0, 0, 1, 0, 0},
    {0.24F, 0, 0, -0.24F, 18.5F, 823.25F},
    {0, 1, -1, 0, 612, 0},
    {0, 0, 0, 0, 5, 7},
}};

Program makeProgram(Choices& choices);

// The text in pieces of one call each, cut at random places.
Program cutAtRandom(std::string_view text, uint32_t cuts, Choices& choices);

}  // namespace programs
