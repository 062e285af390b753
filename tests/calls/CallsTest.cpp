// The converter through its six exported calls only, as a caller has them. The list of objects
// belongs to the process and cannot be emptied from here, so every test uses data of its own and
// looks at what it added.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "include/tqpumpd2k.h"

extern "C" int callsInC(void);

namespace {

using namespace std::string_literals;
using testing::StartsWith;
using PageMatrix = std::array<float, 6>;

constexpr PageMatrix identity = {1, 0, 0, 1, 0, 0};

class Converter {
 public:
  explicit Converter(const PageMatrix& matrix = identity) : handle(PSOpen(matrix.data())) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() { PSClose(handle); }

  // The text of one call; nothing when it failed.
  std::optional<std::string> convert(std::string_view program) {
    // A buffer of its own size, so that a read past its end is seen.
    const std::vector<char> bytes(program.begin(), program.end());
    auto length = static_cast<int32_t>(bytes.size());
    const char* text = PSConvertToPdf(handle, bytes.data(), &length);
    if (!text) {
      return std::nullopt;
    }
    EXPECT_EQ(text[length], '\0');
    return std::string(text, static_cast<size_t>(length));
  }
  void startPage(const PageMatrix& matrix = identity) { PSStartPage(handle, matrix.data()); }
  std::string error() const { return PSGetErrorStr(handle); }
  std::vector<const PdfObject*> objects() const {
    uint64_t count = 0;
    PdfObject* const* array = PSGetPdfObjects(handle, &count);
    return {array, array + count};
  }

  void* const handle;
};

// A gray image of so many bytes, all the same.
std::string imageProgram(size_t bytes, char byte) {
  return std::to_string(bytes) + " 1 8 [] (" + std::string(bytes, byte) + ") image ";
}

// Makes a pattern P that is painted so.
std::string patternProgram(const std::string& paintProc) {
  return "/P 9 dict dup begin /XStep 1 def /YStep 1 def /PaintProc {" + paintProc +
         "} def end def P matrix makepattern ";
}

std::string dataOf(const PdfObject& object) {
  return {reinterpret_cast<const char*>(object.data), static_cast<size_t>(object.dataLength)};
}

constexpr auto tellMatrices =
    "matrix currentmatrix {setlinewidth} forall matrix defaultmatrix {setlinewidth} forall ";

TEST(Calls, AreC) {
  EXPECT_EQ(callsInC(), 0) << "the line in CallsInC.c";
}

TEST(Calls, TakeAndGiveLengths) {
  Converter converter;
  int32_t length = 0;
  const char* text = PSConvertToPdf(converter.handle, "5 setlinewidth ", &length);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(length, 0);
  for (const int32_t negative : {-1, -2147483647 - 1}) {
    length = negative;
    EXPECT_STREQ(PSConvertToPdf(converter.handle, "5 setlinewidth ", &length), "5 w ");
    EXPECT_EQ(length, 4);
  }
  length = 2;
  EXPECT_STREQ(PSConvertToPdf(converter.handle, "7 8 9", &length), "");
  EXPECT_EQ(converter.convert("setlinewidth "), "7 w ");
  length = -5;
  EXPECT_EQ(PSConvertToPdf(converter.handle, "setlinewidth ", &length), nullptr);
  EXPECT_EQ(length, -5);
  EXPECT_EQ(
      converter.convert("3 1 8 [] {currentfile 3 string readstring pop} image a\0b 5 setflat "s),
      "q BI\n/W 3 /H 1 /BPC 8 /CS /G \nID\na\0b\nEI\nQ\n"s);
}

TEST(Calls, FailWithoutTheirPointers) {
  EXPECT_EQ(PSOpen(nullptr), nullptr);
  Converter converter;
  const std::string before = *converter.convert("5 setlinewidth currentlinewidth ");
  PSStartPage(converter.handle, nullptr);
  PSStartPage(nullptr, identity.data());
  int32_t length = 3;
  EXPECT_EQ(PSConvertToPdf(converter.handle, nullptr, &length), nullptr);
  length = -1;
  EXPECT_EQ(PSConvertToPdf(converter.handle, nullptr, &length), nullptr);
  EXPECT_EQ(length, -1);
  EXPECT_EQ(PSConvertToPdf(converter.handle, "1", nullptr), nullptr);
  EXPECT_THAT(converter.error(), StartsWith("Exception:"));
  EXPECT_EQ(PSConvertToPdf(nullptr, "1", &length), nullptr);
  uint64_t count = 7;
  EXPECT_EQ(PSGetPdfObjects(nullptr, &count), nullptr);
  EXPECT_EQ(PSGetPdfObjects(converter.handle, nullptr), nullptr);
  EXPECT_STREQ(PSGetErrorStr(nullptr), "");
  PSClose(nullptr);
  // Nothing happened, and the page goes on.
  EXPECT_EQ(converter.convert("setlinewidth "), before);
  EXPECT_EQ(converter.convert(""), "");
  length = 0;
  EXPECT_STREQ(PSConvertToPdf(converter.handle, nullptr, &length), "");
}

TEST(Calls, KeepTheLastFailure) {
  Converter converter;
  Converter other;
  EXPECT_EQ(converter.error(), "");
  EXPECT_FALSE(converter.convert("(x) setlinewidth "));
  const std::string first = "Exception:[ostscript/lib/NumberUtils:32] Unsupported number type\n";
  EXPECT_EQ(converter.error(), first);
  EXPECT_TRUE(converter.convert("1 setlinewidth "));
  converter.startPage();
  EXPECT_EQ(converter.error(), first);
  // The one failure that has no text.
  EXPECT_FALSE(converter.convert("(a) 1 (b) {pop} for "));
  EXPECT_EQ(converter.error(), first);
  EXPECT_FALSE(converter.convert("3 setlinewidth nosuch 4 setlinewidth "));
  EXPECT_EQ(converter.error(), "Exception:[ameObject:25] NOTHING TO EXECUTE for nosuch\n");
  EXPECT_EQ(converter.convert("currentlinewidth setlinewidth "), "3 w ") << "and no other text";
  EXPECT_EQ(other.error(), "");
}

TEST(Calls, TakeAJobInPieces) {
  Converter converter;
  EXPECT_EQ(converter.convert("2 setlinewidth 6 1 8 [] {currentfile 6 string readhexst"), "2 w ");
  converter.startPage();
  EXPECT_EQ(converter.convert("ring pop} image 6162"), "");
  EXPECT_EQ(converter.convert(" 636"), "");
  EXPECT_EQ(converter.convert("4 6566 "), "q BI\n/W 6 /H 1 /BPC 8 /CS /G \nID\nabcdef\nEI\nQ\n");
}

TEST(Calls, StartAPageAfresh) {
  Converter converter({2, 0, 0, 3, 100, 0.5F});
  EXPECT_EQ(converter.convert(tellMatrices),
            "2 w 0 w 0 w 3 w 100 w 0.5 w 2 w 0 w 0 w 3 w 100 w 0.5 w ");
  EXPECT_TRUE(converter.convert(
      "/x 6 def 4 5 5 setlinewidth 1 0 0 setrgbcolor gsave gsave 7 7 translate 1 2 moveto "));
  converter.startPage({1, 0, 0, 1, 100, 100});
  EXPECT_EQ(converter.convert("currentlinewidth setlinewidth currentgray setlinewidth "
                              "currentpoint 8 9 lineto setlinewidth setlinewidth "),
            "0 w 0 w 8 9 l\n0 w 0 w ");
  EXPECT_EQ(converter.convert(tellMatrices),
            "1 w 0 w 0 w 1 w 100 w 100 w 1 w 0 w 0 w 1 w 100 w 100 w ");
  EXPECT_EQ(converter.convert("[1 0 0 1 110 120] setmatrix "), "1 0 0 1 10 20 cm\n");
  // Definitions and operands stay. A state that is popped beyond the last is the page's.
  EXPECT_EQ(converter.convert("setlinewidth setlinewidth x setlinewidth "), "5 w 4 w 6 w ");
  EXPECT_EQ(converter.convert("grestore grestore "), "Q Q ");
  EXPECT_THAT(*converter.convert(tellMatrices), StartsWith("1 w 0 w 0 w 1 w 100 w 100 w "));
  converter.startPage();
  converter.startPage();
  EXPECT_EQ(converter.convert("grestore currentlinewidth setlinewidth "), "Q 0 w ");
}

TEST(Calls, MakeAnObjectOfALargeImage) {
  Converter converter;
  const size_t before = converter.objects().size();
  const std::string inlineText = *converter.convert(imageProgram(4000, 'i'));
  EXPECT_EQ(inlineText,
            "q BI\n/W 4000 /H 1 /BPC 8 /CS /G \nID\n" + std::string(4000, 'i') + "\nEI\nQ\n");
  const std::string name = "/PSI" + std::to_string(before + 1);
  EXPECT_EQ(converter.convert(imageProgram(4001, 'i')), name + " Do\n");
  EXPECT_EQ(converter.convert("<" + std::string(8000, 'f') +
                              "> /D filter /d exch def "
                              "1 1 2 [] {d 1 string readstring pop} image "),
            "/PSI" + std::to_string(before + 2) + " Do\n");

  const auto objects = converter.objects();
  ASSERT_EQ(objects.size(), before + 2);
  const PdfObject& plain = *objects[before];
  EXPECT_STREQ(plain.name, name.c_str());
  EXPECT_STREQ(plain.dictionary,
               "/Type /XObject /Subtype /Image /BitsPerComponent 8 /Width 4001 /Height 1 "
               "/ColorSpace /DeviceGray ");
  EXPECT_EQ(dataOf(plain), std::string(4001, 'i'));
  EXPECT_EQ(plain.kind, 3U);
  EXPECT_EQ(plain.compress, 1);
  EXPECT_TRUE(!plain.extra && plain.reserved == 0 && !plain.source);
  const PdfObject& encoded = *objects[before + 1];
  EXPECT_STREQ(encoded.dictionary,
               "/Type /XObject /Subtype /Image /BitsPerComponent 2 /Width 1 /Height 1 "
               "/ColorSpace /DeviceGray /Filter [ /D /ASCIIHexDecode] ");
  EXPECT_EQ(encoded.compress, 0);
  EXPECT_EQ(dataOf(encoded), std::string(8000, 'f') + ">");
}

TEST(Calls, CutTheDictionaryOfAnImage) {
  Converter converter;
  const std::string longName(300, 'x');
  ASSERT_TRUE(converter.convert("0 0 0 0 setcmykcolor (" + std::string(4001, 'x') + ") /" +
                                longName +
                                " filter /d exch def 1 1 1 [] {d () readstring pop} image "));
  const std::string expected =
      "/Type /XObject /Subtype /Image /BitsPerComponent 1 /Width 1 "
      "/Height 1 /ColorSpace /DeviceCMYK /Filter [ /" +
      longName;
  EXPECT_EQ(converter.objects().back()->dictionary, expected.substr(0, 299));
}

TEST(Calls, StoreAnImageOnce) {
  Converter converter;
  const size_t before = converter.objects().size();
  const std::string first = *converter.convert(imageProgram(5000, 's'));
  // Equal data are one object, under whatever dimensions; so is what begins a stored image.
  EXPECT_EQ(converter.convert("0 0 0 setrgbcolor 2 1 8 [] (" + std::string(5000, 's') + ") image "),
            "0 0 0 RG 0 0 0 rg " + first);
  EXPECT_EQ(converter.convert("0 setgray " + imageProgram(4500, 's')), "0 G 0 g " + first);
  const std::string longer = *converter.convert(imageProgram(6000, 's'));
  EXPECT_NE(longer, first);
  EXPECT_EQ(converter.convert(imageProgram(5500, 's')), longer);
  EXPECT_EQ(converter.convert(imageProgram(5000, 's')), first);
  EXPECT_EQ(converter.objects().size(), before + 2);
}

TEST(Calls, ShareTheObjectsOfAllConverters) {
  std::string name;
  {
    Converter closed;
    name = *closed.convert(imageProgram(4001, 'c'));
    EXPECT_EQ(closed.convert("/onlyHere 1 def "), "");
  }
  Converter converter;
  EXPECT_EQ(converter.convert(imageProgram(4001, 'c')), name);
  EXPECT_EQ(dataOf(*converter.objects().back()), std::string(4001, 'c'));
  EXPECT_EQ(converter.objects(), converter.objects());
  EXPECT_FALSE(converter.convert("onlyHere "));
}

constexpr auto definePattern =
    "/P 12 dict dup begin /XStep 10 def /YStep 20.5 def /PatternType 1 def /TilingType 3 def "
    "/PaintType 1 def /BBox [0 0 10 20] def /XUID [1] def "
    "/PaintProc {pop 0 0 5 5 rectclip fill} def end def ";

TEST(Calls, MakeAnObjectOfAPattern) {
  Converter converter;
  const size_t before = converter.objects().size();
  const std::string name = "/PA" + std::to_string(before + 1);
  EXPECT_EQ(converter.convert(std::string(definePattern) +
                              "1 setlinewidth P [1 0 0 1 5 6] makepattern setpattern "),
            "1 w /Pattern cs\n" + name + " scn\n");
  ASSERT_EQ(converter.objects().size(), before + 1);
  const PdfObject& pattern = *converter.objects().back();
  EXPECT_STREQ(pattern.name, name.c_str());
  EXPECT_EQ(pattern.kind, 1U);
  EXPECT_EQ(pattern.compress, 1);
  EXPECT_STREQ(pattern.dictionary,
               "/Type /Pattern\n/Matrix [1 0 0 1 5 6 ]\n/XStep 10\n/YStep 20.5\n/PaintType 1\n"
               "/PatternType 1\n/TilingType 3\n/BBox [0 0 10 20 ]\n/Resources <<>> ");
  EXPECT_EQ(dataOf(pattern), "q 10 0 0 20.5 0 0 cm\n0 0 5 5 re W n\nf\nQ\n");
  EXPECT_EQ(pattern.data[pattern.dataLength], '\0');
  EXPECT_NE(pattern.source, nullptr);

  // Across pages by its name; of two patterns of one dictionary the first; in its program only.
  converter.startPage();
  EXPECT_EQ(converter.convert("P matrix makepattern pop P setpattern "),
            "/Pattern cs\n" + name + " scn\n");
  EXPECT_EQ(converter.objects().size(), before + 2);
  Converter other;
  EXPECT_EQ(other.convert(std::string(definePattern) + "P setpattern "), "");
}

TEST(Calls, LeaveOutWhatAPatternLacks) {
  Converter converter;
  ASSERT_TRUE(
      converter.convert("/P 9 dict dup begin /XStep 0 def /YStep 0.00001 def "
                        "/PaintProc {pop} def end def P [0 0 0 0 1 1] makepattern "));
  const PdfObject& pattern = *converter.objects().back();
  EXPECT_STREQ(pattern.dictionary,
               "/Type /Pattern\n/Matrix [/XStep 0\n/YStep 0.00001\n/BBox /Resources <<>> ");
  EXPECT_EQ(dataOf(pattern), "q Q\n");
}

// A clip of the pattern finds the path in front of it; the captured text begins where it began.
TEST(Calls, LetAPatternsClipLookBack) {
  Converter converter;
  EXPECT_EQ(converter.convert("1 2 lineto " + patternProgram("pop clip")), "1 2 l\n");
  EXPECT_EQ(dataOf(*converter.objects().back()), "W n q 1 0 0 1 0 0 cm\nQ\n");
}

TEST(Calls, KeepImagesOfAPatternInline) {
  Converter converter;
  const size_t before = converter.objects().size();
  ASSERT_EQ(converter.convert(patternProgram("pop " + imageProgram(5000, 'p'))), "");
  const auto objects = converter.objects();
  ASSERT_EQ(objects.size(), before + 1);
  EXPECT_EQ(dataOf(*objects.back()), "q 1 0 0 1 0 0 cm\nq BI\n/W 5000 /H 1 /BPC 8 /CS /G \nID\n" +
                                         std::string(5000, 'p') + "\nEI\nQ\nQ\n");

  // A failure leaves the pattern open, and images inline, until the page ends.
  ASSERT_FALSE(converter.convert("P /PaintProc {pop 1 0 get} put P matrix makepattern "));
  const std::string other = imageProgram(5000, 'q');
  converter.startPage();
  ASSERT_FALSE(converter.convert("P /PaintProc 5 put P /BBox 5 put P matrix makepattern "));
  EXPECT_THAT(*converter.convert(other), StartsWith("q BI\n"));
  converter.startPage();
  EXPECT_THAT(*converter.convert(other), StartsWith("/PSI"));
}

TEST(Calls, CloseAConverterAnywhere) {
  for (const std::string& program :
       {"{ { 1 (open"s, "gsave 9 1 8 [] {currentfile 9 string readstring} image abc"s,
        "3 {1 1 8 [] {nosuch} image} repeat "s, patternProgram("nosuch"),
        "1 1 5 {pop 1 dict begin end (a) 0 get nosuch} for "s}) {
    Converter().convert(program);
  }
}

}  // namespace
