#include "postscript/values/Budget.h"

#include "postscript/values/Ex.h"

namespace postscript {

void Budget::expectRoom(size_t bytes) const {
  if (used_ > limit_ || bytes > limit_ - used_) {
    throw Ex("postscript/lib/VirtualMemory", 20, "the program needs more memory than it may have");
  }
}

}  // namespace postscript
