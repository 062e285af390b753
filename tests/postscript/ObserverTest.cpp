// What an observer is told of a run, and that a run without one is the same.
#include "postscript/engine/Observer.h"

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>

#include "postscript/converter/OpenConverter.h"
#include "postscript/engine/Interpreter.h"
#include "postscript/generated/OperatorRows.h"

namespace postscript {
namespace {

constexpr float plain[] = {1, 0, 0, 1, 0, 0};

// Writes what it is told, an event a word.
class Journal : public Observer {
 public:
  void ignored(OperatorRow row) override { text.append(operatorName(row)).append(" "); }
  void imageDiffers(ImageDifference difference) override {
    constexpr const char* words[] = {"reversed ", "matrix ", "decode ", "components "};
    text += words[static_cast<size_t>(difference)];
  }
  void pageShown(size_t textLength) override { text += "page@" + std::to_string(textLength) + " "; }
  void failed(size_t position, std::string_view words) override {
    text.append("failed@").append(std::to_string(position)).append(" ").append(words);
  }
  bool wantsStop() override { return ++questions == stopAt; }

  std::string text;
  int questions = 0;
  int stopAt = 0;
};

struct Outcome {
  std::string told;
  std::string content;
  int questions = 0;
};

Outcome run(std::string_view program, int stopAt = 0) {
  Journal journal;
  journal.stopAt = stopAt;
  const auto converter = openConverter(plain);
  converter->interpreter->observer = &journal;
  converter->convertOn(program);
  return {journal.text, std::string(converter->contentText.text()), journal.questions};
}

TEST(Observer, IsToldWhatAProgramLoses) {
  struct Case {
    const char* program;
    const char* told;
  };
  constexpr Case cases[] = {
      {"1 2 3 4 rectfill 0.5 truncate pop (a) show ", "rectfill truncate show "},
      {"countdictstack pop product pop 0 setgray ", ""},
      {"{} settransfer {1 exch sub} settransfer initclip ", "settransfer initclip "},
      {"(a) rectfill ", "failed@12 [ostscript/lib/ObjectStack:48] pop - expected item on stack"},
      {"1 setgray showpage 5 setlinewidth showpage ", "page@8 page@12 "},
      {"1 0 0 setrgbcolor 2 1 8 [2 0 0 -1 0 1] {(abcdef)} image ", "components "},
      {"0 setgray 2 1 8 [2 0 0 1 0 0] {(ab)} image ", "matrix "},
      {"0 setgray 2 1 8 [2 0 (x) -1 0 1] {(ab)} image ", "matrix "},
      {"0 setgray 2 1 8 [2.0 0 0 -1.5 0 1] {(ab)} image 2 1 8 [2 0 0 -1 0] {(ab)} image ",
       "matrix matrix "},
      {"1 1 8 [1 0 0 -1 0 1.0] {(a)} {(b)} {(c)} true 3 colorimage ", "reversed "},
      {"/d 9 dict def d /Width 1 put d /Height 1 put d /BitsPerComponent 8 put d /Decode [1 0] put "
       "d /ImageMatrix [1 0 0 -1 0 1] put d /DataSource {(a)} put d image "
       "d /Decode [0 1 0 1 0 1 0 1 0 1] put d /ImageMatrix 5 put d image ",
       "decode matrix "},
  };
  for (const auto& [program, told] : cases) {
    EXPECT_EQ(run(program).told, told) << program;
  }
}

TEST(Observer, IsToldWhereARunFailed) {
  EXPECT_EQ(run("1 setgray\n  nonesuch 2 setgray ").told,
            "failed@20 [ameObject:25] NOTHING TO EXECUTE for nonesuch");
  EXPECT_EQ(run("1 setgray nonesuch 2 setgray ").content, "1 G 1 g ") << "the text up to there";
}

TEST(Observer, EndsARunThatWouldNotEnd) {
  const Outcome endless = run("{} loop ", 3);
  EXPECT_EQ(endless.questions, 3);
  EXPECT_EQ(endless.told, "failed@7 [ostscript/lib/Interpreter:71] Stopped on request");
  EXPECT_EQ(run("1 pop ").questions, 0);
}

TEST(Observer, KnowsTheLossOfEveryOperatorThatDoesNothing) {
  const auto converter = openConverter(plain);
  int found = 0;
  for (size_t i = 0; i < operatorRows; ++i) {
    const auto row = static_cast<OperatorRow>(i);
    const PostscriptObject* object =
        converter->interpreter->dictionaries.systemDictionary->body().get(operatorName(row));
    const std::string type = typeid(*object).name();
    const bool works = row == OperatorRow::Countdictstack || row == OperatorRow::Product;
    if (type.find("GeneratedOp") != std::string::npos && !works) {
      ++found;
      EXPECT_NE(operatorLoss(row).lossClass, LossClass::works) << operatorName(row);
    }
  }
  EXPECT_EQ(found, 149);
  EXPECT_EQ(operatorLoss(OperatorRow::Show).lossClass, LossClass::text);
  EXPECT_EQ(operatorLoss(OperatorRow::Stroke).lossClass, LossClass::works);
}

TEST(Observer, ContinuesTheTextOfThePieceBefore) {
  const auto converter = openConverter(plain);
  EXPECT_TRUE(converter->convertOn("0 0 moveto 1 1 lineto gsa"));
  EXPECT_TRUE(converter->convertOn("ve clip "));
  EXPECT_EQ(converter->contentText.text(), "0 0 m\n1 1 l\nW n q ") << "the clip finds the path";
  int32_t length = -1;
  EXPECT_STREQ(converter->convert("1 setgray ", &length), "1 G 1 g ") << "a call begins anew";
}

}  // namespace
}  // namespace postscript
