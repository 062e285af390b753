#include "postscript/painting/GraphicsState.h"

#include "postscript/values/Ex.h"

namespace postscript {

namespace {
constexpr const char* sourceFile = "postscript/lib/GraphicsState";
}

int32_t imageComponents(const GraphicsState& state) {
  switch (state.colorMode) {
    case ColorMode::rgb:
    case ColorMode::hsb:
      return 3;
    case ColorMode::cmyk:
      return 4;
    case ColorMode::gray:
      return 1;
    default:
      throw Ex(sourceFile, 88, "unsupported colorspace");
  }
}

ColorMode imageColorModeOf(const GraphicsState& state) {
  if (state.colorMode == ColorMode::hsb) {
    throw Ex(sourceFile, 109, "unsupported colorspace for images");
  }
  return state.colorMode;
}

}  // namespace postscript
