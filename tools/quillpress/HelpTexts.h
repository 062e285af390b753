// HelpTexts: what --help shows, each text on one screen.
#pragma once

#include <string_view>

namespace quillpress {

// Of a command, or of the program for an empty or unknown one.
std::string_view helpText(std::string_view command);

}  // namespace quillpress
