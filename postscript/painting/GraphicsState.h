// GraphicsState: what the converter must remember of a page so that programs can ask for it again.
// Whatever no operator asks for (caps, joins, dashes, clips) goes to the text and is gone.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "postscript/values/Matrix.h"

namespace postscript {

// The model in which a colour was given. Colour spaces and images use the same numbers.
enum class ColorMode : int32_t { unknown = -1, rgb = 0, hsb = 1, cmyk = 2, gray = 3 };

// "Helvetica".
const std::shared_ptr<const std::string>& freshFontName();

struct GraphicsState {
  double currentX = 0;  // in user space
  double currentY = 0;
  double lineWidth = 0;  // 0 until a program sets it, though the PDF side starts at 1
  Matrix matrix;         // with the page's matrix
  ColorMode colorSpace = ColorMode::rgb;
  // Shared by the states that gsave copied: a program may give a font any name.
  std::shared_ptr<const std::string> fontName = freshFontName();
  double fontSize = 12;
  bool pathOpen = false;  // the text holds a subpath that a written "m" began
  ColorMode colorMode = ColorMode::gray;
  std::array<double, 4> colorValues{};  // the components as last given
};

// How many components a sample of an image has in the state's colour. Fails for an unknown mode.
int32_t imageComponents(const GraphicsState& state);

}  // namespace postscript
