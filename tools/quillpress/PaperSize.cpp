#include "tools/quillpress/PaperSize.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <system_error>

namespace quillpress {
namespace {

struct Paper {
  std::string_view name;
  double width;
  double height;
};

constexpr Paper papers[] = {
    {"a0", 2384, 3370},    {"a1", 1684, 2384},   {"a2", 1191, 1684},      {"a3", 842, 1191},
    {"a4", 595, 842},      {"a5", 420, 595},     {"a6", 298, 420},        {"b4", 709, 1001},
    {"b5", 499, 709},      {"letter", 612, 792}, {"legal", 612, 1008},    {"tabloid", 792, 1224},
    {"ledger", 1224, 792}, {"11x17", 792, 1224}, {"executive", 522, 756}, {"statement", 396, 612}};

struct Unit {
  std::string_view name;
  double points;
};

constexpr Unit units[] = {{"mm", 72 / 25.4}, {"cm", 72 / 2.54}, {"inch", 72},
                          {"in", 72},        {"pt", 1},         {"", 1}};

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return lower;
}

std::optional<double> parseMeasure(std::string_view text) {
  double number = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  text.remove_prefix(static_cast<size_t>(rest - text.data()));
  const auto* unit = std::find_if(std::begin(units), std::end(units),
                                  [&](const Unit& u) { return u.name == text; });
  if (error != std::errc() || unit == std::end(units) || !std::isfinite(number)) {
    return std::nullopt;
  }
  // A hundredth of a point is finer than any paper is cut.
  return unit->points == 1 ? number : std::round(number * unit->points * 100) / 100;
}

}  // namespace

const std::string_view paperNames = "A0 to A6, B4, B5, letter, legal, tabloid, ledger, executive";

std::optional<Box> namedPaper(std::string_view name) {
  const std::string lower = lowerCase(name);
  for (const Paper& paper : papers) {
    if (paper.name == lower) {
      return Box{0, 0, paper.width, paper.height};
    }
  }
  return std::nullopt;
}

std::optional<Box> parsePaper(std::string_view text) {
  if (const auto paper = namedPaper(text)) {
    return paper;
  }
  const std::string lower = lowerCase(text);
  const size_t cross = lower.find('x');
  if (cross == std::string::npos) {
    return std::nullopt;
  }
  const auto width = parseMeasure(std::string_view(lower).substr(0, cross));
  const auto height = parseMeasure(std::string_view(lower).substr(cross + 1));
  if (!width || !height || !isPossiblePage({0, 0, *width, *height})) {
    return std::nullopt;
  }
  return Box{0, 0, *width, *height};
}

bool isPossiblePage(const Box& box) {
  const double width = box.right - box.left;
  const double height = box.top - box.bottom;
  return width > 0 && height > 0 && width <= longestSide && height <= longestSide;
}

}  // namespace quillpress
