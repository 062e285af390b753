// Runs the cases of tests/ps, and each again cut in two calls at every byte.
#include <gtest/gtest.h>

#include "tests/postscript/PsCase.h"

// What GoogleTest shows of a value in a failure.
void PrintTo(const PsCase& psCase, std::ostream* out) {
  *out << psCase.name;
}
void PrintTo(const PsOutcome& outcome, std::ostream* out) {
  *out << "content: " << outcome.content << "\nprints: " << outcome.prints
       << "\nstack: " << outcome.stack << "\nerror: " << outcome.error;
}

namespace {

class PsCases : public testing::TestWithParam<PsCase> {};

TEST_P(PsCases, LeadToWhatTheySay) {
  const PsCase& psCase = GetParam();
  const PsOutcome outcome = runPs(psCase.calls);
  EXPECT_EQ(outcome.error, psCase.error.value_or(""));
  EXPECT_EQ(outcome.content, psCase.content.value_or(outcome.content));
  EXPECT_EQ(outcome.prints, psCase.prints.value_or(outcome.prints));
  EXPECT_EQ(outcome.stack, psCase.stack.value_or(outcome.stack));
}

// A failure loses the rest of its call, so programs that fail are not cut.
TEST_P(PsCases, AreTheSameInTwoPieces) {
  const PsCase& psCase = GetParam();
  if (!psCase.mayBeCut || psCase.error || psCase.calls.size() != 1) return;
  const std::string& program = psCase.calls[0];
  const PsOutcome whole = runPs(program);
  for (size_t cut = 0; cut <= program.size(); ++cut) {
    ASSERT_EQ(runPs({program.substr(0, cut), program.substr(cut)}), whole) << "cut at " << cut;
  }
}

INSTANTIATE_TEST_SUITE_P(Files, PsCases, testing::ValuesIn(readPsCases(QUILLPRESS_TESTS "/ps")),
                         [](const auto& psCase) { return psCase.param.name; });

}  // namespace
