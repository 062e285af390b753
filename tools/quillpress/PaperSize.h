// PaperSize: sizes of paper by name and by measure.
#pragma once

#include <optional>
#include <string_view>

#include "tools/quillpress/Geometry.h"

namespace quillpress {

// The largest side of a page in points that PDF readers take.
constexpr double longestSide = 14400;

// The names that are known, for a message.
extern const std::string_view paperNames;

// In any case: a name such as "A4" or "letter". None if it is not known.
std::optional<Box> namedPaper(std::string_view name);

// A name, or two measures with an x between them: "595x842", "210mmx297mm", "8.5inx11in". None if
// it is neither, or no page can have that size.
std::optional<Box> parsePaper(std::string_view text);

// Whether a page can have these sides.
bool isPossiblePage(const Box& box);

}  // namespace quillpress
