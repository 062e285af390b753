// Runs the cases of tests/ps, and each again cut in two calls at every byte. A case is one line of
// a .ps file, a program and what it must lead to:
//
//   PROGRAM %= KEY "VALUE" KEY "VALUE" ...
//
// Keys: content (the PDF text), prints (the print buffer), stack (the operand stack from the
// bottom, each object as == shows it, with blanks between), error (the failures' reports without
// "Exception:", ×N behind one that comes N times in a row), and nocut without a value (the program
// may not be cut in two). What has no key is not looked at, but a program without error must not
// fail. A line feed is put behind the program. In programs and values ␊ and the other control
// pictures stand for control bytes, ␛ and two hexadecimal digits for any byte, and ‖ cuts a program
// into calls. Lines that begin with % and empty lines are no cases.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "postscript/converter/OpenConverter.h"
#include "postscript/engine/Interpreter.h"

namespace {

struct PsCase {
  std::string name;  // file and line
  std::vector<std::string> calls;
  std::optional<std::string> content, prints, stack, error;
  bool mayBeCut = true;
};

// What a program led to.
struct PsOutcome {
  std::string content, prints, stack, error;
  bool operator==(const PsOutcome&) const = default;
};

// What GoogleTest shows of a value in a failure.
void PrintTo(const PsCase& psCase, std::ostream* out) {
  *out << psCase.name;
}
void PrintTo(const PsOutcome& outcome, std::ostream* out) {
  *out << "content: " << outcome.content << "\nprints: " << outcome.prints
       << "\nstack: " << outcome.stack << "\nerror: " << outcome.error;
}

constexpr std::string_view callCut = "‖";

// Control pictures are E2 90 80 and on in UTF-8, in the order of the control bytes.
std::string decoded(std::string_view text) {
  std::string bytes;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool picture = text.substr(i, 2) == "\xE2\x90" && i + 2 < text.size();
    const auto control = picture ? static_cast<unsigned char>(text[i + 2]) - 0x80u : 0x20u;
    if (control >= 0x20) {
      bytes += text[i];
    } else if (control == 0x1b) {
      bytes += static_cast<char>(std::stoi(std::string(text.substr(i + 3, 2)), nullptr, 16));
      i += 4;
    } else {
      bytes += static_cast<char>(control);
      i += 2;
    }
  }
  return bytes;
}

std::vector<std::string> callsOf(std::string_view program) {
  std::vector<std::string> calls;
  for (;;) {
    const size_t cut = program.find(callCut);
    calls.push_back(decoded(program.substr(0, cut)));
    if (cut == std::string_view::npos) break;
    program.remove_prefix(cut + callCut.size());
  }
  calls.back() += '\n';
  return calls;
}

PsCase parsePsCase(const std::string& name, const std::string& line) {
  PsCase psCase{name, {}, {}, {}, {}, {}, true};
  const size_t mark = line.find(" %=");
  if (mark == std::string::npos) throw std::invalid_argument(name + ": malformed");
  psCase.calls = callsOf(line.substr(0, mark));
  size_t at = mark + 3;
  while ((at = line.find_first_not_of(' ', at)) != std::string::npos) {
    const size_t keyEnd = std::min(line.find(' ', at), line.size());
    const std::string key = line.substr(at, keyEnd - at);
    at = keyEnd;
    if (key == "nocut") {
      psCase.mayBeCut = false;
      continue;
    }
    auto* value = key == "content"  ? &psCase.content
                  : key == "prints" ? &psCase.prints
                  : key == "stack"  ? &psCase.stack
                  : key == "error"  ? &psCase.error
                                    : nullptr;
    const size_t open = line.find('"', at);
    const size_t close = open == std::string::npos ? open : line.find('"', open + 1);
    if (!value || close == std::string::npos) throw std::invalid_argument(name + ": malformed");
    *value = decoded(line.substr(open + 1, close - open - 1));
    at = close + 1;
  }
  return psCase;
}

// The reports of all calls; one that comes several times in a row has their number behind it.
std::string joined(const std::vector<std::string>& reports) {
  std::string text;
  for (size_t i = 0, times = 1; i < reports.size(); i += times, times = 1) {
    while (i + times < reports.size() && reports[i + times] == reports[i]) ++times;
    text += reports[i];
    if (times > 1) text += "×" + std::to_string(times);
  }
  return text;
}

std::string stackText(const postscript::ObjectStack& stack) {
  std::string text;
  for (int32_t i = 0; i < stack.size(); ++i) {
    if (i > 0) text += ' ';
    text += stack.at(i)->syntaxText();
  }
  return text;
}

// All cases of all files of the folder. A malformed line ends the process.
std::vector<PsCase> readPsCases(const std::string& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".ps") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  std::vector<PsCase> cases;
  for (const auto& file : files) {
    std::ifstream stream(file);
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
      if (line.empty() || line[0] == '%') continue;
      cases.push_back(parsePsCase(file.stem().string() + "_" + std::to_string(number), line));
    }
  }
  return cases;
}

// Runs the calls on a fresh converter.
PsOutcome runPs(const std::vector<std::string>& calls) {
  constexpr float identity[] = {1, 0, 0, 1, 0, 0};
  const auto opened = postscript::openConverter(identity);
  postscript::Postscript2Pdf& converter = *opened;
  PsOutcome outcome;
  std::vector<std::string> reports;
  for (const std::string& call : calls) {
    auto length = static_cast<int32_t>(call.size());
    // A buffer of its own size, so that a read past its end is seen.
    const std::vector<char> bytes(call.begin(), call.end());
    converter.errorText.clear();
    const char* text = converter.convert(bytes.data(), &length);
    if (text) {
      outcome.content.append(text, static_cast<size_t>(length));
    } else {
      const std::string& error = converter.errorText;
      reports.push_back(error.empty() ? "(no text)"
                                      : error.substr(std::min<size_t>(10, error.size())));
    }
    outcome.prints += converter.interpreter->printBuffer;
  }
  outcome.error = joined(reports);
  outcome.stack = stackText(converter.interpreter->operandStack);
  return outcome;
}

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
  const PsOutcome whole = runPs({program});
  for (size_t cut = 0; cut <= program.size(); ++cut) {
    ASSERT_EQ(runPs({program.substr(0, cut), program.substr(cut)}), whole) << "cut at " << cut;
  }
}

INSTANTIATE_TEST_SUITE_P(Files, PsCases, testing::ValuesIn(readPsCases(QUILLPRESS_TESTS "/ps")),
                         [](const auto& psCase) { return psCase.param.name; });

}  // namespace
