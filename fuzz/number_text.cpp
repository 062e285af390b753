// The text of a number must be what the C library prints with as many decimals, without the zeros
// at its end. The bytes are doubles: as their bits, and as integers over powers of ten, near which
// the ties are.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "postscript/values/NumberText.h"

namespace {

int decimalsFor(double magnitude) {
  return magnitude < 1 ? 5 : magnitude < 10 ? 4 : magnitude < 1000 ? 3 : magnitude < 10000 ? 1 : 0;
}

std::string printed(double value) {
  char text[400];
  std::snprintf(text, sizeof(text), "%.*f", decimalsFor(std::fabs(value)), value);
  std::string out = text;
  if (out.find('.') != std::string::npos) {
    out.erase(out.find_last_not_of('0') + 1);
    if (out.back() == '.') {
      out.pop_back();
    }
  }
  return out == "-0" ? "0" : out;
}

void check(double value) {
  std::string text;
  postscript::formatNumber(text, value);
  if (std::isfinite(value) && text != printed(value)) {
    std::fprintf(stderr, "%.17g: %s, but %s is right\n", value, text.c_str(),
                 printed(value).c_str());
    __builtin_trap();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  for (; size >= sizeof(double); data += sizeof(double), size -= sizeof(double)) {
    double value;
    std::memcpy(&value, data, sizeof(value));
    check(value);
    int64_t bits;
    std::memcpy(&bits, data, sizeof(bits));
    for (const double scale : {2e1, 2e3, 2e4, 2e5}) {
      const double near = static_cast<double>(bits % 200000000) / scale;
      check(near);
      check(std::nextafter(near, 1e9));
      check(std::nextafter(near, -1e9));
    }
  }
  return 0;
}
