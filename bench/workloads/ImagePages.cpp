#include <array>

#include "bench/workloads/Pages.h"

namespace workloads {

namespace {

constexpr size_t largeSide = 512;

// Samples that differ from image to image. None is white space, which readstring would drop at the
// start.
std::string samples(PageText& out, size_t count) {
  std::string bytes;
  bytes.reserve(count);
  while (bytes.size() < count) {
    for (uint32_t bits = out.choices.below(0xFFFFFFFF), i = 0; i < 4; ++i, bits >>= 8) {
      bytes += static_cast<char>(33 + (bits & 255) % 223);
    }
  }
  bytes.resize(count);
  return bytes;
}

std::string hexOf(const std::string& bytes) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string out;
  out.reserve(bytes.size() * 33 / 16);
  for (size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    out += digits[byte >> 4];
    out += digits[byte & 15];
    if (i % 32 == 31) {
      out += '\n';
    }
  }
  return out;
}

// The bytes are a multiple of four.
std::string ascii85Of(const std::string& bytes) {
  std::string out;
  for (size_t i = 0; i + 4 <= bytes.size(); i += 4) {
    uint32_t group = 0;
    for (size_t j = 0; j < 4; ++j) {
      group = group << 8 | static_cast<unsigned char>(bytes[i + j]);
    }
    std::array<char, 5> five{};
    for (size_t j = 5; j-- > 0; group /= 85) {
      five[j] = static_cast<char>('!' + group % 85);
    }
    out.append(five.data(), five.size());
    if (i % 60 == 56) {
      out += '\n';
    }
  }
  return out;
}

void place(PageText& out) {
  out.put("gsave ");
  out.point(500, 2);
  out.put("translate 100 100 scale 0 setgray\n");
}

std::string head(size_t side) {
  const std::string text = std::to_string(side);
  return text + " " + text + " 8 [" + text + " 0 0 -" + text + " 0 " + text + "] ";
}

void hexImage(PageText& out) {
  place(out);
  out.putData(head(largeSide) + "{currentfile row readhexstring pop} image\n");
  out.putData(hexOf(samples(out, largeSide * largeSide)));
  out.put("grestore\n");
}

void rawImage(PageText& out) {
  place(out);
  out.putData(head(largeSide) + "{currentfile row readstring pop} image\n");
  out.putData(samples(out, largeSide * largeSide));
  out.put("\ngrestore\n");
}

void ascii85Image(PageText& out) {
  place(out);
  const std::string bytes = samples(out, 160 * 160);
  if (out.choices.oneIn(2)) {
    out.putData(head(160) + "{<~\n" + ascii85Of(bytes) + "~>} image\n");
  } else {
    out.putData("/source (" + hexOf(bytes) + ">) /ASCIIHexDecode filter def " + head(160) +
                "{source block readstring pop} image\n");
  }
  out.put("grestore\n");
}

void smallImage(PageText& out) {
  place(out);
  switch (out.choices.below(3)) {
    case 0:
      out.putData(head(16) + "{<" + hexOf(samples(out, 256)) + ">} image\n");
      break;
    case 1:
      out.putData("32 32 true [32 0 0 -32 0 32] {<" + hexOf(samples(out, 128)) + ">} imagemask\n");
      break;
    default:
      out.putData(head(24) + "{currentfile small readhexstring pop} image\n" +
                  hexOf(samples(out, 576)));
  }
  out.put("grestore\n");
}

void define(PageText& out) {
  out.putData("/row 512 string def /block 25600 string def /small 576 string def\n");
}

void pagesOf(PageText& out, void (*image)(PageText&)) {
  define(out);
  while (!out.isFull()) {
    image(out);
  }
}

}  // namespace

void hexImagePages(PageText& out) {
  pagesOf(out, hexImage);
}
void rawImagePages(PageText& out) {
  pagesOf(out, rawImage);
}
void ascii85ImagePages(PageText& out) {
  pagesOf(out, ascii85Image);
}
void smallImagePages(PageText& out) {
  pagesOf(out, smallImage);
}

void mixedImagePages(PageText& out) {
  define(out);
  while (!out.isFull()) {
    hexImage(out);
    rawImage(out);
    for (const size_t end = out.length() + 400000; out.length() < end;) {
      ascii85Image(out);
    }
    for (const size_t end = out.length() + 400000; out.length() < end;) {
      smallImage(out);
    }
  }
}

}  // namespace workloads
