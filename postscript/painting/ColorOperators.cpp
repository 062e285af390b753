#include "postscript/painting/ColorOperators.h"

#include <cmath>
#include <span>

#include "postscript/engine/Operands.h"
#include "postscript/values/Limits.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "Postscript2Pdf";

struct Rgb {
  double red, green, blue;
};

// A turn is taken off or added one at a time, as each step rounds; a hue beyond the limit, whose
// steps would take too long, is reduced at once.
double hueInRange(double hue) {
  if (std::fabs(hue) > limits::hue) {
    hue = std::fmod(hue, 1.0);
  }
  while (hue >= 1) {
    hue -= 1;
  }
  while (hue < 0) {
    hue += 1;
  }
  return hue;
}

Rgb hsbToRgb(double h, double s, double b) {
  if (s == 0) {
    return {b, b, b};
  }
  const double x = hueInRange(h) * 6;
  const int32_t i = toInt32(std::floor(x));
  const double f = x - i;
  const double p = (1 - s) * b;
  const double q = (1 - f * s) * b;
  const double t = (1 - (1 - f) * s) * b;
  switch (i) {
    case 1:
      return {q, b, p};
    case 2:
      return {p, b, t};
    case 3:
      return {p, q, b};
    case 4:
      return {t, p, b};
    case 5:
      return {b, p, q};
    default:  // 0, and a hue that rounds to a full turn
      return {b, t, p};
  }
}

// The sums of grayOf and currentGray round in this order.
double grayOf(const Rgb& color) {
  return color.green * 0.587 + color.red * 0.299 + color.blue * 0.114;
}

double currentGray(const GraphicsState& state) {
  const auto& values = state.colorValues;
  switch (state.colorMode) {
    case ColorMode::gray:
      return values[0];
    case ColorMode::rgb:
      return grayOf({values[0], values[1], values[2]});
    case ColorMode::hsb:
      return grayOf(hsbToRgb(values[0], values[1], values[2]));
    case ColorMode::cmyk:
      return (1.0 - values[0] * 0.299 - values[1] * 0.587 - values[2] * 0.114) * (1.0 - values[3]);
    default:
      throw Ex(sourceFile, 1402, "color conversion not supported");
  }
}

// Pops as many numbers as the model has; the topmost is the last.
template <size_t count>
std::array<double, count> popColor(Interpreter& ps) {
  std::array<double, count> values;
  for (size_t i = count; i-- > 0;) {
    values[i] = popNumber(ps);
  }
  return values;
}

void track(GraphicsState& state, ColorMode mode, std::span<const double> values) {
  state.colorMode = mode;
  std::copy(values.begin(), values.end(), state.colorValues.begin());
}

// The numbers with the stroking operator, and the same text with the filling operator.
void writeColor(Postscript2Pdf& converter, std::span<const double> values,
                std::string_view stroking, std::string_view filling) {
  char text[4 * (mostNumberText + 1)];
  char* end = text;
  for (const double value : values) {
    end = formatNumber(end, value);
    *end++ = ' ';
  }
  const std::string_view numbers(text, end);
  converter.write(numbers, stroking, " ", numbers, filling, " ");
}

// The components as they were given, if they were given in this model.
void pushColor(Interpreter& ps, const GraphicsState& state, ColorMode mode, size_t count) {
  if (state.colorMode != mode) {
    throw Ex(sourceFile, 1371, "Current color conversions not supported");
  }
  for (size_t i = 0; i < count; ++i) {
    pushReal(ps, state.colorValues[i]);
  }
}

}  // namespace

void SetgrayOperator::execute(Interpreter& ps) {
  const auto gray = popColor<1>(ps);
  track(converter->topState(), ColorMode::gray, gray);
  writeColor(*converter, gray, "G", "g");
}

void SetrgbcolorOperator::execute(Interpreter& ps) {
  const auto color = popColor<3>(ps);
  track(converter->topState(), ColorMode::rgb, color);
  writeColor(*converter, color, "RG", "rg");
}

void SethsbcolorOperator::execute(Interpreter& ps) {
  const auto color = popColor<3>(ps);
  track(converter->topState(), ColorMode::hsb, color);
  const Rgb rgb = hsbToRgb(color[0], color[1], color[2]);
  writeColor(*converter, std::array{rgb.red, rgb.green, rgb.blue}, "RG", "rg");
}

void SetcmykcolorOperator::execute(Interpreter& ps) {
  const auto color = popColor<4>(ps);
  track(converter->topState(), ColorMode::cmyk, color);
  writeColor(*converter, color, "K", "k");
}

void CurrentrgbcolorOperator::execute(Interpreter& ps) {
  pushColor(ps, converter->topState(), ColorMode::rgb, 3);
}

void CurrenthsbcolorOperator::execute(Interpreter& ps) {
  pushColor(ps, converter->topState(), ColorMode::hsb, 3);
}

void CurrentcmykcolorOperator::execute(Interpreter& ps) {
  pushColor(ps, converter->topState(), ColorMode::cmyk, 4);
}

void CurrentgrayOperator::execute(Interpreter& ps) {
  pushReal(ps, currentGray(converter->topState()));
}

void SetcolorspaceOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  const auto* space = as<NameObject>(operand.get());
  if (!space) {
    return;
  }
  ColorMode& colorSpace = converter->topState().colorSpace;
  if (space->name() == "DeviceRGB") {
    colorSpace = ColorMode::rgb;
  } else if (space->name() == "DeviceGray") {
    colorSpace = ColorMode::gray;
  } else if (space->name() == "DeviceCMYK") {
    colorSpace = ColorMode::cmyk;
  }
}

void addColorOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<SetrgbcolorOperator>(converter);
  registry.add<SethsbcolorOperator>(converter);
  registry.add<SetcmykcolorOperator>(converter);
  registry.add<SetgrayOperator>(converter);
  registry.add<CurrentrgbcolorOperator>(converter);
  registry.add<CurrenthsbcolorOperator>(converter);
  registry.add<CurrentcmykcolorOperator>(converter);
  registry.add<CurrentgrayOperator>(converter);
  registry.add<SetcolorspaceOperator>(converter);
}

}  // namespace postscript
