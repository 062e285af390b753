// Transcript: all that a caller of the library can see of a program's run, as one text.
#pragma once

#include <cstdint>
#include <string>

#include "bench/library/ConverterLibrary.h"
#include "bench/programs/Program.h"

namespace bench {

// Runs the program's calls on a new converter (or two) and tells what each of them returned and
// which objects it added to the library's list.
std::string transcriptOf(const ConverterLibrary& library, const programs::Program& program);

// All objects of the library's list. They never change after they entered it.
std::string allObjects(const ConverterLibrary& library);

uint64_t hashOf(const std::string& text);

// Control bytes and others that a terminal does not show as \xHH, line feeds as they are.
std::string printable(const std::string& text);

}  // namespace bench
