// The budget of a converter: whatever a program makes grow ends in a failure, and what is dropped
// is given back.
#include <gtest/gtest.h>

#include <string>

#include "postscript/converter/OpenConverter.h"
#include "postscript/engine/Interpreter.h"

namespace postscript {
namespace {

constexpr float identity[] = {1, 0, 0, 1, 0, 0};
constexpr size_t limit = size_t{16} << 20;

struct GrowingProgram {
  const char* name;
  const char* text;
};

constexpr GrowingProgram growingPrograms[] = {
    {"operandStack", "{1} loop "},
    {"executionStack", "/f {g 1} def /g {f 2} def f "},
    {"strings", "/s (x) def {s s length s putinterval} loop "},
    {"keptStrings", "{1000 string} loop "},
    {"arrays", "{1000 array} loop "},
    {"growingArray", "/a 1 array def {a a length 0 put} loop "},
    {"dictionary", "/d 1 dict def /n 0 def {d n 9 string cvs cvn 1 put /n n 1 add def} loop "},
    {"dictionaries", "{1 dict dup /k 1 put} loop "},
    {"dictionaryStack", "{1 dict begin} loop "},
    {"contentText", "{1 2 moveto 3 4 lineto} loop "},
    {"graphicsStates", "{gsave} loop "},
    {"printBuffer", "{(a line of text) =} loop "},
};

class BudgetOf : public testing::TestWithParam<GrowingProgram> {};

TEST_P(BudgetOf, EndsTheProgramWithAMessage) {
  const auto converter = openConverter(identity);
  Budget& budget = converter->interpreter->memory.budget;
  budget.setLimit(limit);
  const std::string program = GetParam().text;
  auto length = static_cast<int32_t>(program.size());
  EXPECT_EQ(converter->convert(program.data(), &length), nullptr);
  EXPECT_NE(converter->errorText.find("the program needs more memory"), std::string::npos)
      << converter->errorText;
  EXPECT_LE(budget.used(), limit);
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

}  // namespace
}  // namespace postscript
