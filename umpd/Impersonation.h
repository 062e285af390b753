// Impersonation: on NT 4 a job runs in the spooler with its client's rights. To write into the
// system directory it steps out of them, and back into them afterwards.
#pragma once

#include "umpd/platform/Platform.h"

namespace umpd {

class Impersonation {
 public:
  explicit Impersonation(Platform& platform) : platform_(platform) {}
  // Whatever ends a job between the two steps, its client's rights are back.
  ~Impersonation() { returnToClient(); }

  void revertToSpooler();
  // Does nothing if there is nothing to return from.
  void returnToClient();

 private:
  Platform& platform_;
  OwnedModule spoolerModule;
  TokenHandle revertToken{};
};

}  // namespace umpd
