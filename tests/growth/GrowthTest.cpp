// Whatever a page holds, the work grows as the page does: the exponent over a doubling of the input
// is at most 1.1. Each case makes a job of a size; its work is what it takes above an empty job.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "include/tqpumpd2k.h"
#include "tests/growth/WorkCount.h"

namespace {

struct Job {
  std::vector<std::string> pages;
  bool asksForObjects = false;  // once a page
};

struct Case {
  const char* name;
  Job (*make)(int size);
  int size;
};

void PrintTo(const Case& growthCase, std::ostream* out) {
  *out << growthCase.name;
}

std::string repeated(int times, const std::string& text) {
  std::string out;
  for (int i = 0; i < times; ++i) {
    out += text;
  }
  return out;
}

// So many digits, so that texts that differ are of one length.
std::string numbered(int number) {
  std::string digits = std::to_string(number);
  return std::string(7 - digits.size(), '0') + digits;
}

// An image in gray of so many bytes that ends in the number.
std::string image(int bytes, int number) {
  return std::to_string(bytes) + " 1 8 matrix {currentfile " + std::to_string(bytes) +
         " string readstring pop} image\n" + std::string(static_cast<size_t>(bytes) - 7, 'x') +
         numbered(number) + "\n";
}

constexpr const char* pattern =
    "/P 9 dict dup begin /XStep 5 def /YStep 5 def /PaintProc {pop} def end def ";

Job beginnings(int size) {
  return {{repeated(size, "1 dict begin ")}};
}

Job lookUpsBelow(int size) {
  return {{"/x 1 def " + repeated(size, "1 dict begin x pop ")}};
}

Job changesDuringForall(int size) {
  std::string text = "/d 9 dict def ";
  for (int i = 0; i < size; ++i) {
    text += "d /k" + numbered(i) + " 1 put ";
  }
  return {{text + "d {pop pop d /x 1 put d /x undef} forall"}};
}

// Distinct in two bytes at each place.
Job similarNames(int size) {
  constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  std::string text = "1 dict begin ";
  for (int i = 0; i < size; ++i) {
    const size_t number = static_cast<size_t>(i);
    const std::string two{letters[number / letters.size()], letters[number % letters.size()]};
    for (const char* name : {"Character##", "abc##def", "##ab", "ab##xyz", "##character"}) {
      const std::string_view form = name;
      const size_t place = form.find('#');
      text.append("/").append(form.substr(0, place)).append(two).append(form.substr(place + 2));
      text += " 1 def ";
    }
  }
  return {{text}};
}

Job putintervals(int size) {
  return {{"/s 0 string def " + std::to_string(size) + " {s s length (a) putinterval} repeat "}};
}

Job anchorsearches(int size) {
  return {{"/s (" + std::string(static_cast<size_t>(size), 'a') + ") def " + std::to_string(size) +
           " {s (a) anchorsearch pop pop pop} repeat "}};
}

Job distinctImages(int size) {
  std::string text;
  for (int i = 0; i < size; ++i) {
    text += image(5000, i);
  }
  return {{text}};
}

Job imagesWithOneBeginning(int size) {
  std::string text;
  for (int i = 0; i < size; ++i) {
    text += image(100000, i);
  }
  return {{text}};
}

Job unknownPatterns(int size) {
  return {{pattern + repeated(size, "P matrix makepattern pop 9 dict setpattern ")}};
}

Job knownPatterns(int size) {
  return {{pattern + repeated(size, "P dup matrix makepattern setpattern P setpattern ")}};
}

Job objectsOncePerPage(int size) {
  return {std::vector<std::string>(static_cast<size_t>(size),
                                   std::string(pattern) + "P matrix makepattern pop "),
          true};
}

Job clipsAfterFarSegment(int size) {
  return {{"1 1 moveto 2 2 lineto " + repeated(size, "clip 1 setlinewidth ")}};
}

Job clipsAfterPatterns(int size) {
  return {{pattern + ("1 1 moveto 2 2 lineto " +
                      repeated(size, "P matrix makepattern pop 1 setlinewidth clip "))}};
}

Job countToMarks(int size) {
  return {{"mark " + repeated(size, "1 counttomark pop ")}};
}

Job copiedSaves(int size) {
  return {{"save " + std::to_string(size) + " {dup} repeat "}};
}

Job chainedFilters(int size) {
  const std::string count = std::to_string(size);
  return {{"/f (abc) def " + count + " {/f f /X filter def} repeat " + count +
           " {f 5 string readstring pop pop} repeat "}};
}

Job longFontName(int size) {
  return {{"/F 3 dict dup begin /FontMatrix matrix def /FontName (" +
           std::string(static_cast<size_t>(size), 'n') + ") cvn def end definefont setfont " +
           repeated(size, "gsave ")}};
}

Job pagesLeavingDictionaries(int size) {
  return {std::vector<std::string>(static_cast<size_t>(size),
                                   "9 dict begin /x 1 def x 2 moveto 3 4 lineto stroke ")};
}

Job deepExecution(int size) {
  return {{repeated(size, "{ ") + repeated(size, "} exec ")}};
}

Job longArray(int size) {
  return {{"[" + repeated(size, "1 ") + "] aload length array astore pop "}};
}

uint64_t workOf(const Job& job) {
  constexpr float identity[] = {1, 0, 0, 1, 0, 0};
  const uint64_t before = growth::workSoFar();
  void* converter = PSOpen(identity);
  for (const std::string& page : job.pages) {
    PSStartPage(converter, identity);
    auto length = static_cast<int32_t>(page.size());
    EXPECT_NE(PSConvertToPdf(converter, page.data(), &length), nullptr) << PSGetErrorStr(converter);
    uint64_t count = 0;
    if (job.asksForObjects) {
      PSGetPdfObjects(converter, &count);
    }
  }
  PSClose(converter);
  return growth::workSoFar() - before;
}

class Growth : public testing::TestWithParam<Case> {};

TEST_P(Growth, IsLinear) {
  const Case& growthCase = GetParam();
  const double empty = static_cast<double>(workOf({{""}}));
  const Job half = growthCase.make(growthCase.size), whole = growthCase.make(2 * growthCase.size);
  const double less = static_cast<double>(workOf(half)) - empty;
  const double more = static_cast<double>(workOf(whole)) - empty;
  EXPECT_LE(std::log2(more / less), 1.1)
      << less << " units of work for half the size, " << more << " for the whole";
}

constexpr Case cases[] = {
    {"beginnings", beginnings, 2000},
    {"lookUpsBelow", lookUpsBelow, 2000},
    {"changesDuringForall", changesDuringForall, 4000},
    {"similarNames", similarNames, 1300},
    {"putintervals", putintervals, 20000},
    {"anchorsearches", anchorsearches, 20000},
    {"distinctImages", distinctImages, 200},
    {"imagesWithOneBeginning", imagesWithOneBeginning, 30},
    {"unknownPatterns", unknownPatterns, 2000},
    {"knownPatterns", knownPatterns, 2000},
    {"objectsOncePerPage", objectsOncePerPage, 1000},
    {"clipsAfterFarSegment", clipsAfterFarSegment, 4000},
    {"clipsAfterPatterns", clipsAfterPatterns, 2000},
    {"countToMarks", countToMarks, 4000},
    {"copiedSaves", copiedSaves, 1000},
    {"chainedFilters", chainedFilters, 500},
    {"longFontName", longFontName, 1000},
    {"pagesLeavingDictionaries", pagesLeavingDictionaries, 1000},
    {"deepExecution", deepExecution, 2000},
    {"longArray", longArray, 20000},
};

INSTANTIATE_TEST_SUITE_P(Inputs, Growth, testing::ValuesIn(cases),
                         [](const auto& growthCase) { return growthCase.param.name; });

}  // namespace
