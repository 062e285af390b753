#include "bench/programs/FileData.h"

#include <array>

namespace programs {

namespace {

// Bytes of a short repeated period, so that fuzz bytes are not used up by one image.
std::string someBytes(Choices& choices, size_t count, bool text) {
  const uint32_t start = choices.below(256);
  const uint32_t step = choices.below(256);
  std::string bytes;
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t byte = (start + i * step + i / 7) & 255;
    bytes += static_cast<char>(text ? 33 + byte % 90 : byte);
  }
  return bytes;
}

std::string hexOf(Choices& choices, const std::string& bytes) {
  static constexpr char upper[] = "0123456789ABCDEF", lower[] = "0123456789abcdef";
  const char* digits = choices.oneIn(2) ? upper : lower;
  const uint32_t lineLength = 1 + choices.below(80);
  std::string out;
  for (size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    out += digits[byte >> 4];
    out += digits[byte & 15];
    if ((i + 1) % lineLength == 0) {
      out += choices.oneIn(8) ? "\r\n" : "\n";
    }
  }
  return out;
}

std::string ascii85Of(const std::string& bytes) {
  std::string out;
  for (size_t i = 0; i + 4 <= bytes.size(); i += 4) {
    uint32_t word = 0;
    for (size_t j = 0; j < 4; ++j) {
      word = word << 8 | static_cast<unsigned char>(bytes[i + j]);
    }
    std::string five(5, '!');
    for (size_t j = 5; j-- > 0; word /= 85) {
      five[j] = static_cast<char>('!' + word % 85);
    }
    out += five;
    if (i % 60 == 56) {
      out += '\n';
    }
  }
  return out;
}

struct Samples {
  uint32_t width, height, bits, components;
  size_t bytes() const { return size_t{width} * height * bits * components / 8; }
  std::string head() const {
    return std::to_string(width) + " " + std::to_string(height) + " " + std::to_string(bits) +
           " [" + std::to_string(width) + " 0 0 -" + std::to_string(height) + " 0 " +
           std::to_string(height) + "] ";
  }
};

Samples someSamples(Choices& choices) {
  static constexpr std::array<uint32_t, 4> depths = {8, 8, 1, 4};
  if (choices.oneIn(8)) {
    return {60 + choices.below(20), 60 + choices.below(20), 8, choices.oneIn(4) ? 3u : 1u};
  }
  return {1 + choices.below(12), 1 + choices.below(12), depths[choices.below(4)],
          choices.oneIn(3) ? 3u : 1u};
}

// Data read by hexadecimal digits or as they stand, in rows of one buffer.
std::string fromCurrentFile(Choices& choices, const Samples& samples, const std::string& end) {
  const bool hex = choices.oneIn(2);
  const size_t total = samples.bytes();
  const size_t row = 1 + choices.below(static_cast<uint32_t>(total) + 2);
  std::string bytes = someBytes(choices, (total + row - 1) / row * row, !choices.oneIn(4));
  std::string out;
  const std::string buffer =
      choices.oneIn(2) ? "/buf" : std::string();  // a named buffer, or a new string each time
  if (!buffer.empty()) {
    out += "/buf " + std::to_string(row) + " string def ";
  }
  out += samples.head() + "{currentfile " +
         (buffer.empty() ? std::to_string(row) + " string" : "buf") +
         (hex ? " readhexstring pop} " : " readstring pop} ") + end + "\n";
  return out + (hex ? hexOf(choices, bytes) : bytes) + "\n";
}

std::string inProcedure(Choices& choices, const Samples& samples, const std::string& end) {
  const std::string bytes = someBytes(choices, samples.bytes(), true);
  switch (choices.below(4)) {
    case 0:
      return samples.head() + "{<" + hexOf(choices, bytes) + ">} " + end;
    case 1:
      return samples.head() + "{<~" + ascii85Of(bytes + "abcd") + "~>} " + end;
    case 2:
      return samples.head() + "<" + hexOf(choices, bytes) + "> " + end;
    default:
      return "/src <" + hexOf(choices, bytes) + "> /ASCIIHexDecode filter def " + samples.head() +
             "{src 99 string readstring pop} " + end;
  }
}

std::string byDictionary(Choices& choices, const Samples& samples) {
  std::string decode = "[";
  for (uint32_t i = 0; i < samples.components; ++i) {
    decode += "0 1 ";
  }
  const std::string bytes = someBytes(choices, samples.bytes(), true);
  return "8 dict begin /ImageType 1 def /Width " + std::to_string(samples.width) + " def /Height " +
         std::to_string(samples.height) + " def /BitsPerComponent " + std::to_string(samples.bits) +
         " def /Decode " + decode + "] def /DataSource {<" + hexOf(choices, bytes) +
         ">} def currentdict end image";
}

std::string threeSources(Choices& choices) {
  const uint32_t width = 1 + choices.below(9);
  std::string out = std::to_string(width) + " 1 8 matrix ";
  for (int i = 0; i < 3; ++i) {
    out += "{<" + hexOf(choices, someBytes(choices, width, false)) + ">} ";
  }
  return out + "true 3 colorimage";
}

std::string mask(Choices& choices) {
  const Samples samples{8 * (1 + choices.below(4)), 1 + choices.below(16), 1, 1};
  const std::string data = "<" + hexOf(choices, someBytes(choices, samples.bytes(), false)) + ">";
  const std::string head = std::to_string(samples.width) + " " + std::to_string(samples.height) +
                           (choices.oneIn(2) ? " true" : " false") + " matrix ";
  switch (choices.below(3)) {
    case 0:
      return head + "{" + data + "} imagemask";
    case 1:
      return head + data + " imagemask";
    default:
      return "/s1 " + data + " def " + head + "/s1 imagemask";
  }
}

}  // namespace

std::string imageStatement(Choices& choices) {
  Samples samples = someSamples(choices);
  switch (choices.below(8)) {
    case 0:
      return mask(choices);
    case 1:
      return threeSources(choices);
    case 2:
      return byDictionary(choices, samples);
    case 3:
      return fromCurrentFile(choices, samples,
                             "false " + std::to_string(samples.components) + " colorimage");
    case 4:
    case 5: {
      const std::string colour = samples.components == 3 ? "1 0 0 setrgbcolor " : "0 setgray ";
      return colour + fromCurrentFile(choices, samples, "image");
    }
    default:
      return (samples.components == 3 ? "0 1 0 setrgbcolor " : "1 setgray ") +
             inProcedure(choices, samples, "image");
  }
}

std::string readStatement(Choices& choices) {
  static constexpr std::array buffers = {"s0",           "s2", "9 string",        "4 string",
                                         "9 string dup", "s1", "[9 string] 0 get"};
  const std::string buffer = buffers[choices.below(static_cast<uint32_t>(buffers.size()))];
  const uint32_t count = choices.below(12);
  const std::string bytes = someBytes(choices, count, !choices.oneIn(3));
  switch (choices.below(6)) {
    case 0:
      return "{currentfile " + buffer + " readstring W W} exec " + bytes + "\n";
    case 1:
      return "{currentfile " + buffer + " readhexstring W W} exec " + hexOf(choices, bytes) + "\n";
    case 2:
      return "{currentfile " + buffer + " readline W W} exec " + someBytes(choices, count, true) +
             "\n";
    case 3:
      return "{currentfile read W W} exec " + std::string(1, bytes.empty() ? 'x' : bytes[0]);
    case 4:
      return "currentfile s2 readline\n" + someBytes(choices, count, true) + "\nW W";
    default:
      return "/r {currentfile s2 readhexstring pop W} def r " + hexOf(choices, bytes) + " r " +
             hexOf(choices, bytes);
  }
}

}  // namespace programs
