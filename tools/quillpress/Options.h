// Options: what the command line asks for.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/quillpress/Geometry.h"
#include "tools/quillpress/PdfAssembler.h"
#include "tools/quillpress/Watch.h"

namespace quillpress {

enum class Command { convert, check, content, objects, operators, name, xmp };

struct Options {
  Command command = Command::convert;
  // "-" is a standard stream. Of convert and content: an input for each output.
  std::vector<std::string> inputs;
  std::vector<std::string> outputs;
  std::string folder;        // of objects
  bool contentOnly = false;  // the content text instead of a PDF
  bool strict = false;
  bool quiet = false;
  std::string json;  // where the report goes; empty for nowhere
  Matrix pageMatrix = identity;
  std::optional<Box> pageSize;
  Limits limits;
  PdfInfo info;  // in place of what the document says
  // Of name and xmp.
  std::string title;
  std::vector<std::pair<std::string, std::string>> settings;
  std::vector<std::string> existing;
};

// Takes the command line with the program's name in front. Gives nothing when there is nothing left
// to do, and then sets the exit status: after --help and
// --version, and after a command line that makes no sense, which was told on standard error.
std::optional<Options> parseOptions(std::vector<std::string> words, int& exitStatus);

}  // namespace quillpress
