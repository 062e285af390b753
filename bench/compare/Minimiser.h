// Minimiser: cuts a program on which two libraries differ down to what the difference needs.
#pragma once

#include <functional>

#include "bench/programs/Program.h"

namespace bench {

// A program on which `differs` is still true, from which no call and no piece of a text that was
// tried could be taken away. `differs` is asked a bounded number of times.
programs::Program minimised(programs::Program program,
                            const std::function<bool(const programs::Program&)>& differs);

}  // namespace bench
