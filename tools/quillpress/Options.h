// Options: what the command line asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/quillpress/Geometry.h"

namespace quillpress {

struct Options {
  std::string input;         // "-" is standard input
  std::string output;        // "-" is standard output
  bool contentOnly = false;  // the content text instead of a PDF
  Matrix pageMatrix = identity;
  std::optional<Box> pageSize;
};

// Takes the command line with the program's name in front. Gives nothing when there is nothing left
// to do, and then sets the exit status: after --help and
// --version, and after a command line that makes no sense, which was told on standard error.
std::optional<Options> parseOptions(std::vector<std::string> arguments, int& exitStatus);

}  // namespace quillpress
