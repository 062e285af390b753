#include "postscript/values/Budget.h"

#include "postscript/values/Ex.h"

namespace postscript {

void Budget::fail() {
  throw Ex("postscript/lib/VirtualMemory", 20, "the program needs more memory than it may have");
}

}  // namespace postscript
