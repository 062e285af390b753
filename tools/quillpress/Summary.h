// Summary: what became of an input, in a few lines for people.
#pragma once

#include <ostream>
#include <string>

#include "tools/quillpress/Report.h"

namespace quillpress {

// The failures, a line each, and then what is in the output and what is not. Nothing is written of
// an input that came out whole when it is to be quiet.
void writeSummary(std::ostream& out, const InputReport& report, bool quiet);

// A line that says whether the input will come out whole, and what not.
void writeVerdict(std::ostream& out, const InputReport& report);

// "1 page", "3 pages".
std::string counted(size_t count, std::string_view noun);

}  // namespace quillpress
