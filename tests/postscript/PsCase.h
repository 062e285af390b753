// A case of tests/ps: one line of a .ps file, a program and what it must lead to.
//
//   PROGRAM %= KEY "VALUE" KEY "VALUE" ...
//
// Keys: content (the PDF text), prints (the print buffer), stack (the operand stack from the
// bottom, each object as == shows it, with blanks between), error (the report of the failure,
// without "Exception:"), and nocut without a value (the program may not be cut in two). What has no
// key is not looked at, but a program without error must not fail. A line feed is put behind the
// program. In programs and values ␊ and the other control pictures stand for control bytes, ␛ and
// two hexadecimal digits for any byte, and ‖ cuts a program into calls. Lines that begin with % and
// empty lines are no cases.
#ifndef TESTS_POSTSCRIPT_PSCASE_H
#define TESTS_POSTSCRIPT_PSCASE_H

#include <optional>
#include <string>
#include <vector>

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

// All cases of all files of the folder. Ends the process with a message for a malformed line.
std::vector<PsCase> readPsCases(const std::string& folder);

// Runs the calls on a fresh converter.
PsOutcome runPs(const std::vector<std::string>& calls);
inline PsOutcome runPs(const std::string& program) {
  return runPs(std::vector{program});
}

#endif
