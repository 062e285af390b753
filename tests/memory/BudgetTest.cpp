// The budget of a converter: whatever a program makes grow ends in a failure before much more than
// the budget is allocated; and closing gives all of it back.
#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "postscript/converter/OpenConverter.h"
#include "postscript/engine/Interpreter.h"
#include "postscript/painting/ClearPdfObjects.h"
#include "postscript/values/ObjectPool.h"
#include "tests/memory/Allocations.h"

namespace postscript {
namespace {

constexpr float identity[] = {1, 0, 0, 1, 0, 0};
constexpr size_t limit = size_t{16} << 20;

struct GrowingProgram {
  const char* name;
  const char* text;
  // Follows again and again, each time in a call of its own.
  const char* more = nullptr;
};

std::ostream& operator<<(std::ostream& out, const GrowingProgram& program) {
  return out << program.name;
}

constexpr const char* line = "a line of a text that is cut by the end of each piece of the input ";

constexpr GrowingProgram growingPrograms[] = {
    // Stacks, and small values of every kind on them.
    {"integers", "{1} loop "},
    {"integerObjects", "{1 cvx} loop "},
    {"marks", "{mark} loop "},
    {"namesOnStack", "/n /abc def {/n load dup} loop "},
    {"copies", "/s (abc) def {s dup} loop "},
    {"emptyStrings", "{0 string} loop "},
    {"emptyArrays", "{[]} loop "},
    {"emptyDictionaries", "{1 dict} loop "},
    {"files", "currentfile pop {currentfile} loop "},
    {"saves", "{save} loop "},
    {"copiedSaves", "save {dup} loop "},
    {"dictionaryStack", "{1 dict begin} loop "},
    {"openProcedures", "", "{ { { { { { { { { { { { { { { { { { { { { { { { { { { { { { { "},
    {"openProcedure", "{ ", "1 (abc) /name {2 3} <41> dup pop 1.5 "},
    // What runs.
    {"recursion", "/f {g 1} def /g {f 2} def f "},
    {"nestedFor", "/p {f} def /f {0 1 9 /p load for} def f "},
    {"nestedForReal", "/p {pop f} def /f {0.5 1.5 9.5 /p load for} def f "},
    {"nestedForall", "/p {pop f} def /f {[1] /p load forall} def f "},
    {"nestedLoop", "/p {f} def /f {/p load loop} def f "},
    {"nestedRepeat", "/p {f} def /f {2 /p load repeat} def f "},
    {"nestedStopped", "/p {f} def /f {/p load stopped} def f "},
    {"failures", "", "(a) 1 2 {} for "},
    {"failingStores", "", "[] -1 (abc) put "},
    // Strings.
    {"strings", "/s (x) def {s s length s putinterval} loop "},
    {"growingString", "/s (x) def {s s length (abcdefgh) putinterval} loop "},
    {"keptStrings", "{1000 string} loop "},
    {"stringOfSize", "500000000 string "},
    {"intervals", "/s 100000 string def {s 0 90000 getinterval} loop "},
    {"filteredReads", "/f 100000 string /X filter def {f 1 string readstring pop} loop "},
    {"shownCounts", "{/s 1 string def [s] pop} loop "},
    {"token", "(", line},
    {"hexToken", "<", "4142434445464748494A4B4C4D4E4F505152535455565758595A4142434445464748"},
    {"escapes", "(",
     "\\101\\102\\n\\(\\)\\103\\104\\n\\(\\)\\105\\106\\n\\(\\)\\107\\110\\n\\(\\)"},
    {"nameToken", "/", "abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyzabcdefghijklmno"},
    {"readstring", "currentfile 12000000 string readstring ", line},
    {"readhexstring", "currentfile 12000000 string readhexstring ",
     "4142434445464748494A4B4C4D4E4F505152535455565758595A4142434445464748"},
    // Arrays, dictionaries, names.
    {"arrays", "{1000 array} loop "},
    {"growingArray", "/a 1 array def {a a length 0 put} loop "},
    {"dictionary", "/d 1 dict def /n 0 def {d n 9 string cvs cvn 1 put /n n 1 add def} loop "},
    {"dictionaries", "{1 dict dup /k 1 put} loop "},
    {"walkedDictionary",
     "/d 1 dict def /n 0 def {d n 9 string cvs cvn n put d {pop pop exit} forall "
     "/n n 1 add def} loop "},
    {"names", "/n 0 def {n 9 string cvs cvn /n n 1 add def} loop "},
    {"longNames",
     "/s 1000 string def 0 1 999 {s exch 1 put} for /n 0 def {s 1 n 9 string cvs putinterval s cvn "
     "/n n 1 add def} loop "},
    {"longNamesDropped",
     "/s 100000 string def 1 1 99999 {s exch 1 put} for s 0 (x) putinterval /n 0 def 200 {s 1 n 9 "
     "string cvs putinterval s cvn cvx pop 1 dict s cvn 1 put /n n 1 add def} repeat {1 2} loop "},
    // Filters.
    {"filters", "/f (abc) def {/f f /X filter def} loop "},
    {"longFilterNames",
     "/s 1000 string def 1 1 999 {s exch 1 put} for s 0 (x) putinterval /f (abc) def {/f f s cvn "
     "filter def} loop "},
    {"hexStrings", "", "<41><42><43><44><45><46><47><48><49><4a><4b><4c><4d><4e><4f><50><51><52>"},
    // Printing.
    {"printBuffer", "{(a line of text) =} loop "},
    {"print", "{(a line of text) print} loop "},
    {"sharedNest", "/a [1000 string] def 15 {/a [a a a a] def} repeat a == "},
    {"copiedSave", "save 3000000 {dup exch pop} repeat == "},
    // Painting.
    {"contentText", "{1 2 moveto 3 4 lineto} loop "},
    {"clips", "1 1 moveto 2 2 lineto gsave {clip} loop "},
    {"graphicsStates", "{gsave} loop "},
    {"fontNames",
     "/s 1000 string def 1 1 999 {s exch 1 put} for s 0 (x) putinterval /n 0 def /F 3 dict def F "
     "/FontMatrix matrix put {s 1 n 9 string cvs putinterval F /FontName s cvn put F setfont gsave "
     "/n n 1 add def} loop "},
    {"imageOfLoop", "/row 10000 string def 10000 10000 8 matrix {row} image "},
    {"imageOfSources",
     "/row 10000 string def 5000 5000 8 matrix {row} {row} {row} true 3 colorimage "},
    {"imageOfInput",
     "/row 1000 string def 10000 10000 8 matrix {currentfile row readstring pop} "
     "image\n",
     line},
    {"filteredImage",
     "/f 10 string def 200000 {/f f /abcdefgh filter def} repeat 0 1 8 matrix "
     "{f 1 string readstring pop} image "},
    {"imageObjects",
     "/row 5000 string def /n 0 def {row 0 n 9 string cvs putinterval 5000 1 8 matrix {row} image "
     "/n n 1 add def} loop "},
    {"largeImageObjects",
     "/row 500000 string def /n 0 def {row 0 n 9 string cvs putinterval 500000 1 8 matrix {row} "
     "image /n n 1 add def} loop "},
    {"patterns",
     "/P 9 dict dup begin /XStep 5 def /YStep 5 def /PaintProc {pop} def end def "
     "{P matrix makepattern pop} loop "},
    {"largePatterns",
     "/P 9 dict dup begin /XStep 5 def /YStep 5 def /PaintProc {pop 1000 {1 2 moveto} repeat} def "
     "end def {P matrix makepattern pop} loop "},
    {"patternBoxes",
     "/P 9 dict dup begin /XStep 5 def /YStep 5 def /BBox 1000 array def 0 1 1000 {BBox exch 1.5 "
     "put} for /PaintProc {pop} def end def {P matrix makepattern pop} loop "},
};

// Runs the program until it lacks memory, and returns whether it does.
bool runsOut(Postscript2Pdf& converter, const GrowingProgram& program) {
  std::string piece = program.text;
  std::string more;
  for (int i = 0; program.more && i < 50; ++i) {
    more += program.more;
  }
  for (int calls = 0; calls < 200'000; ++calls) {
    auto length = static_cast<int32_t>(piece.size());
    if (!converter.convert(piece.data(), &length) &&
        converter.errorText.find("the program needs more memory") != std::string::npos) {
      return true;
    }
    if (!program.more) {
      break;
    }
    piece = more;
  }
  ADD_FAILURE() << converter.errorText;
  return false;
}

int64_t blocksInUse() {
  objectPool::releaseUnused();
  return allocations::inUse();
}

class BudgetOf : public testing::TestWithParam<GrowingProgram> {};

TEST_P(BudgetOf, EndsTheProgramBeforeItTakesMore) {
  openConverter(identity).reset();
  const int64_t before = blocksInUse();
  auto converter = openConverter(identity);
  Budget& budget = converter->interpreter->memory.budget;
  budget.setLimit(limit);
  allocations::watchPeak();
  if (runsOut(*converter, GetParam())) {
    EXPECT_LE(budget.used(), limit);
    EXPECT_LE(allocations::peakBytes(), static_cast<int64_t>(limit + limit / 3));
  }
  converter.reset();
  clearPdfObjects();
  EXPECT_EQ(blocksInUse(), before);
}

INSTANTIATE_TEST_SUITE_P(Growing, BudgetOf, testing::ValuesIn(growingPrograms),
                         [](const auto& row) { return row.param.name; });

TEST(Budget, IsGivenBackWithWhatIsDropped) {
  const auto converter = openConverter(identity);
  Interpreter& ps = *converter->interpreter;
  const auto run = [&ps](const std::string& text) { ps.run(text.data(), text.size()); };
  run("clear ");
  const size_t before = ps.memory.budget.used();
  run("100 {1000 string} repeat 100 {[1 2 (a) 4]} repeat 100 {5 dict dup /k (v) put} repeat ");
  EXPECT_GT(ps.memory.budget.used(), before + 100'000);
  run("clear ");
  EXPECT_LT(ps.memory.budget.used(), before + 2'000) << "but for the stack's own room";
}

// The list keeps the records; the converter that added them counts them for as long as it is there
// and the list is not emptied.
TEST(Budget, CountsTheObjectsOfItsConverter) {
  const std::string image = "/row 900000 string def 900000 1 8 matrix {row} image ";
  const auto convert = [&image](Postscript2Pdf& converter) {
    auto length = static_cast<int32_t>(image.size());
    EXPECT_NE(converter.convert(image.data(), &length), nullptr);
    return converter.interpreter->memory.budget.used();
  };
  auto first = openConverter(identity);
  const auto second = openConverter(identity);
  EXPECT_GT(convert(*first), 1'800'000U) << "a row and a record";
  EXPECT_LT(convert(*second), 1'500'000U) << "a row; the record is the first one's";
  first.reset();
  clearPdfObjects();
  EXPECT_GT(convert(*second), 1'800'000U);
  clearPdfObjects();
  int32_t length = 0;
  EXPECT_NE(second->convert("", &length), nullptr);
  EXPECT_LT(second->interpreter->memory.budget.used(), 1'500'000U);
}

}  // namespace
}  // namespace postscript
