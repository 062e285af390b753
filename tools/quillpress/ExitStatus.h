// The program's exit statuses.
#pragma once

namespace quillpress {

constexpr int exitAllWell = 0;
constexpr int exitPageFailed = 1;     // the other pages were written
constexpr int exitNothingUsable = 2;  // nothing was written, or the command line was wrong

}  // namespace quillpress
