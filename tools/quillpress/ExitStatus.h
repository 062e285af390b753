// The program's exit statuses, which its scripts and the launcher rely on.
#pragma once

namespace quillpress {

constexpr int exitWhole = 0;        // the pages are whole as far as the engine can tell
constexpr int exitNothingMade = 2;  // no output was made, or the command line was wrong
constexpr int exitIncomplete = 3;   // output was made, but something of the source is missing in it

}  // namespace quillpress
