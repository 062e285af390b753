#include "tools/quillpress/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>
#include <utility>

#include "tools/quillpress/ExitStatus.h"

namespace quillpress {
namespace {

// A number in plain decimal notation, in the range of the library's 32-bit floats.
std::optional<double> parseNumber(std::string_view text) {
  float number = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || rest != text.data() + text.size() || !std::isfinite(number)) {
    return std::nullopt;
  }
  return number;
}

Matrix parseMatrix(std::string_view text) {
  const CLI::ValidationError wrong(
      "--matrix",
      "give six numbers a,b,c,d,e,f of which a*d - b*c is not 0, not " + std::string(text));
  Matrix matrix{};
  for (size_t i = 0; i < matrix.size(); ++i) {
    const size_t comma = text.find(',');
    const auto number = parseNumber(text.substr(0, comma));
    if (!number || (comma == std::string_view::npos) != (i + 1 == matrix.size())) {
      throw wrong;
    }
    matrix[i] = *number;
    text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  }
  if (matrix[0] * matrix[3] - matrix[1] * matrix[2] == 0) {
    throw wrong;
  }
  return matrix;
}

Box parsePageSize(std::string_view text) {
  if (text == "A4") {
    return a4;
  }
  if (text == "Letter") {
    return letter;
  }
  const size_t cross = text.find('x');
  if (cross != std::string_view::npos) {
    const auto width = parseNumber(text.substr(0, cross));
    const auto height = parseNumber(text.substr(cross + 1));
    if (width && height && *width > 0 && *height > 0) {
      return {0, 0, *width, *height};
    }
  }
  throw CLI::ValidationError("--page-size",
                             "give A4, Letter or WIDTHxHEIGHT in points, not " + std::string(text));
}

}  // namespace

std::optional<Options> parseOptions(std::vector<std::string> arguments, int& exitStatus) {
  Options options;
  CLI::App app("Turns PostScript pages into PDF.", "quillpress");
  app.set_version_flag("--version", "quillpress " QUILLPRESS_VERSION);
  app.require_subcommand(1);
  // A path that begins with a slash is no option, on Windows either.
  app.allow_windows_style_options(false);
  app.footer(
      "Exit status: 0 all is well, 1 a page failed and was left out, 2 nothing was written.");

  CLI::App* convert = app.add_subcommand("convert", "Converts a PostScript file to a PDF file.");
  convert->add_option("INPUT", options.input, "PostScript file, - for standard input")->required();
  convert->add_option("OUTPUT", options.output, "PDF file, - for standard output")->required();
  convert->add_flag("--content", options.contentOnly,
                    "Write the text of the pages' content, as the library gives it, and no PDF");
  convert
      ->add_option_function<std::string>(
          "--matrix", [&](const std::string& text) { options.pageMatrix = parseMatrix(text); },
          "The page's default coordinate system, 1,0,0,1,0,0 when not given")
      ->type_name("a,b,c,d,e,f");
  convert
      ->add_option_function<std::string>(
          "--page-size", [&](const std::string& text) { options.pageSize = parsePageSize(text); },
          "A4, Letter or WIDTHxHEIGHT in points; otherwise the file's bounding box, or Letter")
      ->type_name("SIZE");
  try {
    // CLI11 takes them in reverse order.
    arguments.erase(arguments.begin());
    std::reverse(arguments.begin(), arguments.end());
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    exitStatus = app.exit(error) == 0 ? exitAllWell : exitNothingUsable;
    return std::nullopt;
  }
  return options;
}

}  // namespace quillpress
