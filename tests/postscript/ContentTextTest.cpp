// The content text and its clips, beside a text in which every clip is put into its place at once,
// and looks for it from the end back.
#include "postscript/painting/ContentText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace postscript {
namespace {

class PlainText {
 public:
  void insertClip(std::string_view clip) {
    text.insert(placeFromTheEnd().value_or(text.size()), clip);
  }
  std::string takePart(size_t start) {
    const std::string part = text.substr(start);
    text.resize(start);
    return part;
  }

  std::string text;

 private:
  std::optional<size_t> placeFromTheEnd() const {
    bool sawQ = false;
    for (size_t end = text.size(); end > 0;) {
      const size_t before = text.find_last_of(" \n\r", end - 1);
      const size_t start = before == std::string::npos ? 0 : before + 1;
      const std::string token = text.substr(start, end - start);
      sawQ = sawQ || token == "q";
      if (token == "c" || token == "l" || token == "v" || token == "y") {
        return sawQ ? std::optional(start + 2) : std::nullopt;
      }
      end = start == 0 ? 0 : start - 1;
    }
    return std::nullopt;
  }
};

// Runs both, by random steps. Few of the texts are segments, so that clips look far back.
class TextPair {
 public:
  explicit TextPair(unsigned seed) : random_(seed) {}

  void step() {
    switch (below(40)) {
      case 0:
        start_ = content_.beginPart();
        EXPECT_EQ(start_, plain_.text.size());
        break;
      case 1:
        start_ = std::min(start_, content_.size());
        EXPECT_EQ(std::string_view(content_.takePart(start_)), plain_.takePart(start_));
        break;
      case 2:
        EXPECT_EQ(content_.text(), plain_.text);
        break;
      case 3:
        if (below(8) == 0) {
          content_.clear();
          plain_.text.clear();
        }
        break;
      case 4:
      case 5:
      case 6:
      case 7:
        insertClip(below(2) ? "W n " : "W* n ");
        break;
      default:
        append();
    }
    ASSERT_EQ(content_.size(), plain_.text.size());
  }
  void expectSame() { EXPECT_EQ(content_.text(), plain_.text); }

 private:
  size_t below(size_t limit) { return random_() % limit; }
  void insertClip(std::string_view clip) {
    content_.insertClip(clip);
    plain_.insertClip(clip);
  }
  void append() {
    // Some end in half a token.
    static const std::string_view texts[] = {
        "1 2 l\n", "3 c\n",    "q ",   "q ",
        "q\n",     "Q ",       "S ",   "0 0 1 RG ",
        "q",       "l",        " ",    "\r",
        "5 ",      "xl ",      "ql ",  "1 0 0 1 5.25 700.125 cm\n",
        "l q ",    "y\rq\r\n", "v\n ", "W n q ",
        "data",    "12 m\n"};
    const std::string_view text = texts[below(std::size(texts))];
    content_.append(text);
    plain_.text += text;
  }

  std::mt19937 random_;
  ContentText content_{nullptr};
  PlainText plain_;
  size_t start_ = 0;
};

TEST(ContentText, PutsClipsWhereALookFromTheEndBackWould) {
  for (unsigned seed = 0; seed < 3000 && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    TextPair texts(seed);
    for (int i = 0; i < 200; ++i) {
      texts.step();
    }
    texts.expectSame();
  }
}

}  // namespace
}  // namespace postscript
