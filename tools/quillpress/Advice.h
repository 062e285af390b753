// Advice: what a failure means for someone who has a PostScript file and no debugger. The engine's
// words are for its developers; nearly all failures of real files have one of a dozen causes.
#pragma once

#include <string>
#include <string_view>

#include "tools/quillpress/Report.h"

namespace quillpress {

// What is known of a failure.
struct FailureContext {
  std::string_view engine;  // the engine's words
  std::string_view token;   // the last one that was read
  std::string_view line;    // the source line
  std::string_view text;    // the whole program, in which definitions are sought
};

// The failure with its cause, words and advice; not yet with its place.
Failure explain(const FailureContext& context);

// Whether it may well be that an earlier failure is what this one comes of: something that it would
// have defined or left on the stack is not there.
bool mayFollow(const Failure& failure, std::string_view text);

}  // namespace quillpress
