// Runs the cases of tests/ps, and each again cut in two calls at every byte.
//
//   %% name of the case
//   PROGRAM  %key value %key value
//
// A case has a name and one or more rows, each run by a converter of its own. A row is a program
// and what it must lead to, on as many lines as it takes; a line end in a program is one blank.
// Keys: pdf (the text of the page), stack (the operand stack from the bottom, each object as ==
// shows it), prints (what it printed), error (the report of a failed call; ×3 after one that comes
// three times in a row), nothing, and nocut (the program may not be cut in two). A key that comes
// again continues its value. What has no key must be empty.
//
// ‖ cuts a program into calls; the last call ends with a line feed. ␊ and the other control
// pictures are control bytes, ␛ and two hexadecimal digits any byte, ␠ a blank at either end of a
// value. Reals on the stack are shown without the zeros at their end, and [/ in a report is
// [ostscript/lib/. Lines that begin with a % and a blank are comments.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "postscript/converter/OpenConverter.h"
#include "postscript/engine/Interpreter.h"

namespace {

// What a program leads to, as bytes, or as it is written in a case.
struct PsOutcome {
  std::string pdf, stack, prints, error;
  bool operator==(const PsOutcome&) const = default;
};

struct PsRow {
  int line = 0;
  std::string program;
  PsOutcome expected;
  bool isComplete = false;  // has a key
  bool mayBeCut = true;
};

struct PsCase {
  std::string file, name;
  std::vector<PsRow> rows;
};

// What GoogleTest shows of a case in a list or a failure.
void PrintTo(const PsCase& psCase, std::ostream* out) {
  *out << psCase.name;
}

constexpr std::string_view callCut = "‖", blankPicture = "␠";
constexpr std::array<std::string_view, 6> keys = {"pdf",   "stack",   "prints",
                                                  "error", "nothing", "nocut"};

std::string replaced(std::string text, std::string_view what, std::string_view by) {
  for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
    text.replace(at, what.size(), by);
  }
  return text;
}

std::string trimmed(std::string_view text) {
  const size_t begin = std::min(text.find_first_not_of(' '), text.size());
  return std::string(text.substr(begin, text.find_last_not_of(' ') + 1 - begin));
}

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

std::string encoded(std::string_view bytes) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte == 0x1b || byte >= 0x7f) {
      text.append("␛").append({digits[byte >> 4], digits[byte & 15]});
    } else if (byte < 0x20) {
      text.append({'\xE2', '\x90', static_cast<char>(0x80 + byte)});
    } else {
      text += c;
    }
  }
  return text;
}

// The outcome as a case has it.
PsOutcome encoded(const PsOutcome& outcome) {
  static const std::regex zerosAtTheEnd(R"((\.\d+?)0+(?!\d))");
  return {encoded(outcome.pdf), std::regex_replace(encoded(outcome.stack), zerosAtTheEnd, "$1"),
          encoded(outcome.prints), replaced(outcome.error, "[ostscript/lib/", "[/")};
}

// Where a key of the line begins, at its %; the line's size if there is none.
size_t findKey(std::string_view line, size_t from) {
  for (size_t at = from; (at = line.find('%', at)) != std::string_view::npos; ++at) {
    const std::string_view word = line.substr(at + 1, line.substr(at + 1).find(' '));
    if ((at == 0 || line[at - 1] == ' ') && std::ranges::find(keys, word) != keys.end()) return at;
  }
  return line.size();
}

void addExpectation(PsRow& row, std::string_view keyAndValue) {
  const size_t keyEnd = std::min(keyAndValue.find(' '), keyAndValue.size());
  const std::string_view key = keyAndValue.substr(1, keyEnd - 1);
  const std::string value = replaced(trimmed(keyAndValue.substr(keyEnd)), blankPicture, " ");
  const auto append = [&](std::string& text, std::string_view separator) {
    text.append(text.empty() ? "" : separator).append(value);
  };
  row.isComplete = row.isComplete || key != "nocut";
  row.mayBeCut = row.mayBeCut && key != "nocut" && key != "error";
  if (key == "pdf") {
    append(row.expected.pdf, "");
  } else if (key == "stack") {
    append(row.expected.stack, " ");
  } else if (key == "prints") {
    append(row.expected.prints, "");
  } else if (key == "error") {
    append(row.expected.error, "\n");
  }
}

void addLine(std::vector<PsRow>& rows, int number, std::string_view line) {
  size_t key = findKey(line, 0);
  const std::string program = trimmed(line.substr(0, key));
  if (!program.empty()) {
    if (rows.empty() || rows.back().isComplete) rows.emplace_back().line = number;
    rows.back().program.append(rows.back().program.empty() ? "" : " ").append(program);
  }
  for (size_t next; key < line.size() && !rows.empty(); key = next) {
    next = findKey(line, key + 1);
    addExpectation(rows.back(), line.substr(key, next - key));
  }
}

std::vector<PsCase> readPsFile(const std::filesystem::path& file) {
  std::vector<PsCase> cases;
  std::ifstream stream(file);
  std::string line;
  for (int number = 1; std::getline(stream, line); ++number) {
    if (line.starts_with("%% ")) {
      cases.push_back({file.string(), line.substr(3), {}});
    } else if (!line.empty() && !line.starts_with("% ")) {
      addLine(cases.at(cases.size() - 1).rows, number, line);
    }
  }
  return cases;
}

// All cases of all files of the folder. A row that expects nothing ends the process.
std::vector<PsCase> readPsCases(const std::string& folder) {
  std::set<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".ps") files.insert(entry.path());
  }
  std::vector<PsCase> cases;
  for (const auto& file : files) {
    std::ranges::move(readPsFile(file), std::back_inserter(cases));
  }
  for (const PsCase& psCase : cases) {
    for (const PsRow& row : psCase.rows) {
      if (!row.isComplete)
        throw std::invalid_argument(psCase.file + ": no key after " + row.program);
    }
  }
  return cases;
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

// The reports of all calls, a line each; one that comes several times in a row has their number
// after it.
std::string joined(const std::vector<std::string>& reports) {
  std::string text;
  for (size_t i = 0, times = 1; i < reports.size(); i += times, times = 1) {
    while (i + times < reports.size() && reports[i + times] == reports[i]) ++times;
    text.append(text.empty() ? "" : "\n").append(reports[i]);
    if (times > 1) text += " ×" + std::to_string(times);
  }
  return text;
}

std::string reportOf(const std::string& errorText) {
  if (errorText.empty()) return "(no text)";
  const size_t begin = std::min(std::string_view("Exception:").size(), errorText.size());
  return errorText.substr(begin, errorText.size() - begin - (errorText.ends_with('\n') ? 1 : 0));
}

std::string stackText(const postscript::ObjectStack& stack) {
  std::string text;
  for (int32_t i = 0; i < stack.size(); ++i) {
    if (i > 0) text += ' ';
    text += stack.at(i)->syntaxText();
  }
  return text;
}

// Runs the calls on a fresh converter.
PsOutcome runPs(const std::vector<std::string>& calls) {
  constexpr float identity[] = {1, 0, 0, 1, 0, 0};
  const auto converter = postscript::openConverter(identity);
  PsOutcome outcome;
  std::vector<std::string> reports;
  for (const std::string& call : calls) {
    auto length = static_cast<int32_t>(call.size());
    // A buffer of its own size, so that a read past its end is seen.
    const std::vector<char> bytes(call.begin(), call.end());
    converter->errorText.clear();
    if (const char* text = converter->convert(bytes.data(), &length)) {
      outcome.pdf.append(text, static_cast<size_t>(length));
    } else {
      reports.push_back(reportOf(converter->errorText));
    }
    outcome.prints += converter->interpreter->printBuffer;
  }
  outcome.error = joined(reports);
  outcome.stack = stackText(converter->interpreter->operandStack);
  return outcome;
}

class PsCases : public testing::TestWithParam<PsCase> {
 protected:
  // A failure at the row's line with case, expected and got on lines of their own. how: in how many
  // pieces.
  static void expectSame(const PsRow& row, const std::string& how, const PsOutcome& expected,
                         const PsOutcome& got) {
    const auto compare = [&](const char* key, const std::string& left, const std::string& right) {
      if (left == right) return;
      ADD_FAILURE_AT(GetParam().file.c_str(), row.line)
          << "case:     " << GetParam().name << how << "\nprogram:  " << row.program
          << "\nkey:      " << key << "\nexpected: " << left << "\ngot:      " << right;
    };
    compare("pdf", expected.pdf, got.pdf);
    compare("stack", expected.stack, got.stack);
    compare("prints", expected.prints, got.prints);
    compare("error", expected.error, got.error);
  }
};

TEST_P(PsCases, LeadToWhatTheySay) {
  for (const PsRow& row : GetParam().rows) {
    expectSame(row, "", row.expected, encoded(runPs(callsOf(row.program))));
  }
}

// A failure loses the rest of its call, so programs that fail are not cut.
TEST_P(PsCases, AreTheSameInTwoPieces) {
  for (const PsRow& row : GetParam().rows) {
    const std::vector<std::string> calls = callsOf(row.program);
    if (!row.mayBeCut || calls.size() != 1) continue;
    const PsOutcome whole = runPs(calls);
    for (size_t cut = 0; cut <= calls[0].size(); ++cut) {
      const PsOutcome pieces = runPs({calls[0].substr(0, cut), calls[0].substr(cut)});
      if (pieces == whole) continue;
      expectSame(row, ", cut at byte " + std::to_string(cut), encoded(whole), encoded(pieces));
      break;
    }
  }
}

// The file and the case's name, in the characters that test names may have.
std::string testName(const testing::TestParamInfo<PsCase>& info) {
  const std::string file = std::filesystem::path(info.param.file).stem().string();
  return std::regex_replace(file + ' ' + info.param.name, std::regex("[^A-Za-z0-9]+"), "_");
}

INSTANTIATE_TEST_SUITE_P(Files, PsCases, testing::ValuesIn(readPsCases(QUILLPRESS_TESTS "/ps")),
                         testName);

}  // namespace
