// GraphicsState: what the converter must remember of a page so that programs can ask for it again.
// Whatever no operator asks for (caps, joins, dashes, clips) goes to the text and is gone.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "postscript/values/Matrix.h"
#include "postscript/values/Symbol.h"

namespace postscript {

// The model in which a colour was given. Colour spaces and images use the same numbers.
enum class ColorMode : int32_t { unknown = -1, rgb = 0, hsb = 1, cmyk = 2, gray = 3 };

// The name of a font. A program may give one any name, so states share the text.
class FontName {
 public:
  // Helvetica.
  FontName() = default;
  explicit FontName(Symbol& symbol) : symbol_(&symbol) { symbol.take(); }
  FontName(const FontName& other) : symbol_(other.symbol_) {
    if (symbol_) {
      symbol_->take();
    }
  }
  FontName(FontName&& other) noexcept : symbol_(std::exchange(other.symbol_, nullptr)) {}
  FontName& operator=(FontName other) noexcept {
    std::swap(symbol_, other.symbol_);
    return *this;
  }
  ~FontName() {
    if (symbol_) {
      symbol_->giveBack();
    }
  }

  std::string_view text() const { return symbol_ ? symbol_->text() : "Helvetica"; }

 private:
  Symbol* symbol_ = nullptr;
};

struct GraphicsState {
  double currentX = 0;  // in user space
  double currentY = 0;
  double lineWidth = 0;  // 0 until a program sets it, though the PDF side starts at 1
  Matrix matrix;         // with the page's matrix
  ColorMode colorSpace = ColorMode::rgb;
  FontName fontName;
  double fontSize = 12;
  bool pathOpen = false;  // the text holds a subpath that a written "m" began
  ColorMode colorMode = ColorMode::gray;
  std::array<double, 4> colorValues{};  // the components as last given
};

// How many components a sample of an image has in the state's colour. Fails for an unknown mode.
int32_t imageComponents(const GraphicsState& state);
// The mode of an image that has none of its own. Fails for HSB.
ColorMode imageColorModeOf(const GraphicsState& state);

}  // namespace postscript
