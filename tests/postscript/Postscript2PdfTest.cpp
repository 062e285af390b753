// The converter from within: what no call tells.
#include "postscript/converter/OpenConverter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <span>

#include "postscript/engine/Interpreter.h"
#include "postscript/painting/ClearPdfObjects.h"
#include "support/DebugOutput.h"

namespace postscript {
namespace {

using testing::ElementsAre;

constexpr float identity[] = {1, 0, 0, 1, 0, 0};

class Postscript2PdfTest : public testing::Test {
 protected:
  // The text of one call; "failed" when there is none.
  std::string convert(const std::string& program) { return convertIn(converter, program); }
  static std::string convertIn(Postscript2Pdf& other, const std::string& program) {
    auto length = static_cast<int32_t>(program.size());
    const char* text = other.convert(program.data(), &length);
    return text ? std::string(text, static_cast<size_t>(length)) : "failed";
  }
  std::string prints(const std::string& program) {
    convert(program);
    return converter.interpreter->printBuffer;
  }
  std::span<PdfObject* const> objects() {
    uint64_t count = 0;
    PdfObject* const* array = converter.getPdfObjects(&count);
    return {array, count};
  }

  void SetUp() override { clearPdfObjects(); }
  void TearDown() override { clearPdfObjects(); }

  const std::unique_ptr<Postscript2Pdf> opened = openConverter(identity);
  Postscript2Pdf& converter = *opened;
};

const std::string image = "4001 1 8 [] (" + std::string(4001, 'x') + ") image ";
const std::string definePattern =
    "/P 9 dict dup begin /XStep 1 def /YStep 1 def /PaintProc {pop} def end def ";

TEST_F(Postscript2PdfTest, TracksFontsAndColorSpaces) {
  const GraphicsState& fresh = converter.topState();
  EXPECT_EQ(fresh.fontName.text(), "Helvetica");
  EXPECT_EQ(fresh.fontSize, 12);
  EXPECT_EQ(fresh.colorSpace, ColorMode::rgb);
  convert("/Helvetica findfont 12 scalefont setfont /DeviceCMYK setcolorspace ");
  EXPECT_DOUBLE_EQ(converter.topState().fontSize, 12);
  EXPECT_EQ(converter.topState().colorSpace, ColorMode::cmyk);
  convert("gsave /Helvetica findfont 12 scalefont setfont /DeviceGray setcolorspace ");
  EXPECT_DOUBLE_EQ(converter.topState().fontSize, 144);
  EXPECT_EQ(converter.topState().colorSpace, ColorMode::gray);
  convert(
      "/T 3 dict dup begin /FontMatrix [0 0.01 -0.01 0 0 0] def /FontName /Turned def end def "
      "T setfont /DeviceRGB setcolorspace ");
  EXPECT_DOUBLE_EQ(converter.topState().fontSize, 10);
  EXPECT_EQ(converter.topState().fontName.text(), "Turned");
  EXPECT_EQ(converter.topState().colorSpace, ColorMode::rgb);
  // Without a good name the size stays too.
  EXPECT_EQ(convert("T /FontName 5 put T /FontMatrix matrix put T setfont "), "failed");
  EXPECT_DOUBLE_EQ(converter.topState().fontSize, 10);
  convert("grestore ");
  EXPECT_DOUBLE_EQ(converter.topState().fontSize, 12);
}

TEST_F(Postscript2PdfTest, NamesSavesOverTheProcess) {
  const auto openedToo = openConverter(identity);
  Postscript2Pdf& other = *openedToo;
  const std::string first = prints("save == ");
  ASSERT_TRUE(first.starts_with("ps_save Save "));
  const int number = std::stoi(first.substr(13));
  convertIn(other, "save ");
  EXPECT_EQ(prints("save dup == == "), "ps_save Copy of Save " + std::to_string(number + 2) +
                                           "\nps_save Save " + std::to_string(number + 2) + "\n");
}

TEST_F(Postscript2PdfTest, TellsFailuresToTheDebugger) {
  static std::string heard;
  quillpress::debugReceiver = [](const char* text) { heard += text; };
  convert("nosuch ");
  convert("(a) 1 (b) {pop} for ");
  quillpress::debugReceiver = nullptr;
  EXPECT_EQ(heard, "Exception:[ameObject:25] NOTHING TO EXECUTE for nosuch\n");
}

TEST_F(Postscript2PdfTest, GivesBackWhatAnImageHeld) {
  const std::string source = "/s {(ab)} def /m [] def ";
  convert(source + "2 1 8 m /s load image 2 1 8 m /s load image ");
  DictionaryStack& dictionaries = converter.interpreter->dictionaries;
  EXPECT_EQ(dictionaries.lookup("s")->refCount, 1);
  EXPECT_EQ(dictionaries.lookup("m")->refCount, 1);
  convert("5 1 8 m {currentfile 5 string readstring pop} image ");
  EXPECT_EQ(dictionaries.lookup("m")->refCount, 2);
}

// Clips go into the text when the call has run, and the text may grow once more for them.
TEST_F(Postscript2PdfTest, FailsWhereverTheMemoryEnds) {
  convert("/k {0 0 moveto 1 1 lineto gsave 2000 {clip} repeat} def ");
  Budget& budget = converter.interpreter->memory.budget;
  std::string text = "failed";
  for (size_t more = 0; text == "failed" && more < 1'000'000; more += 500) {
    converter.errorText.clear();
    converter.interpreter->executionStack.clear();
    converter.startPage(identity);
    budget.setLimit(budget.used() + more);
    text = convert("k ");
    EXPECT_EQ(text == "failed", !converter.errorText.empty());
  }
  EXPECT_EQ(text.size(), std::string("0 0 m\n1 1 l\nq ").size() + 2000 * 4);
}

TEST_F(Postscript2PdfTest, NumbersObjectsFromOneAfterAClearing) {
  EXPECT_EQ(convert(image), "/PSI1 Do\n");
  convert(definePattern + "P matrix makepattern pop ");
  EXPECT_EQ(convert("P setpattern "), "/Pattern cs\n/PA2 scn\n");
  clearPdfObjects();
  EXPECT_EQ(objects().size(), 0U);
  EXPECT_EQ(convert("P setpattern "), "");
  EXPECT_EQ(convert(image), "/PSI1 Do\n");
}

TEST_F(Postscript2PdfTest, KeepsAPatternsDictionaryAsLongAsItsName) {
  convert(definePattern + "P matrix makepattern pop P matrix makepattern pop ");
  PostscriptObject* pattern = converter.interpreter->dictionaries.lookup("P");
  EXPECT_EQ(pattern->refCount, 2);
  EXPECT_EQ(convert("P setpattern /Q P def Q setpattern P dup setpattern pop "),
            "/Pattern cs\n/PA1 scn\n/Pattern cs\n/PA1 scn\n");
  clearPdfObjects();
  EXPECT_EQ(pattern->refCount, 3);
  EXPECT_EQ(convert("P setpattern "), "");
  EXPECT_EQ(pattern->refCount, 2);
  // A record that outlives its converter.
  {
    const auto openedToo = openConverter(identity);
    Postscript2Pdf& closed = *openedToo;
    convertIn(closed, definePattern + "P matrix makepattern pop ");
  }
  EXPECT_EQ(objects().size(), 1U);
  EXPECT_EQ(convert(definePattern + "P setpattern "), "");
}

TEST_F(Postscript2PdfTest, ClosesACaptureWhoseRecordIsGone) {
  convert(definePattern +
          "P /PaintProc {pop currentfile 2 string readstring pop pop} put "
          "P matrix makepattern ");
  EXPECT_EQ(objects().size(), 1U);
  EXPECT_TRUE(converter.inPattern);
  clearPdfObjects();
  EXPECT_EQ(convert("ab 5 setlinewidth "), "5 w ");
  EXPECT_EQ(objects().size(), 0U);
  EXPECT_FALSE(converter.inPattern);
}

TEST_F(Postscript2PdfTest, LeavesARecordUnfilledWhenItsPatternFails) {
  convert(definePattern + "P /PaintProc {nosuch} put P matrix makepattern ");
  const PdfObject* record = objects().front();
  EXPECT_EQ(record->data, nullptr);
  EXPECT_EQ(record->dataLength, 0U);
  EXPECT_EQ(convert(image), "/PSI2 Do\n");
}

TEST_F(Postscript2PdfTest, NumbersAPatternWhoseDictionaryCannotBeWritten) {
  convert(definePattern + "P /BBox 5 put P matrix makepattern ");
  ASSERT_EQ(objects().size(), 1U);
  EXPECT_STREQ(objects()[0]->dictionary, "");
  EXPECT_EQ(objects()[0]->source, nullptr);
  // Its capture is open: the next makepattern closes it.
  convert("1 2 moveto 3 4 lineto P setpattern makepattern ");
  EXPECT_STREQ(reinterpret_cast<const char*>(objects()[0]->data), "1 2 m\n3 4 l\nQ\n");
  EXPECT_EQ(convert(image), "/PSI2 Do\n");
}

}  // namespace
}  // namespace postscript
