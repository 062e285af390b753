// NamedMutex: a lock that processes share by its name.
//
// Whoever cannot have it goes on without: a print job is worth more than its lock. A mutex whose
// holder died is acquired like any other.
#pragma once

#include <string>

#include "umpd/platform/Platform.h"

namespace umpd {

class NamedMutex {
 public:
  // Makes the mutex, or opens the existing one. A failure is reported to the debugger.
  NamedMutex(Platform& platform, std::u16string name);

  void wait();
  void release();

 private:
  // A mutex that could not be made may have been made by others meanwhile.
  bool open();

  Platform& platform_;
  std::u16string name_;
  OwnedObject handle_;
};

}  // namespace umpd
