// SimulatedPlatform: a whole small machine in memory, with one process of it.
//
// It replaces the system in tests: what the system would keep is open to look at and to
// arrange, what other processes would do is scripted through the journal's hooks, every operation
// is on record and can be made to fail. It begins as Windows 7; become() makes it another.
#pragma once

#include <cstddef>

#include "umpd/platform/Platform.h"
#include "umpd/platform/simulated/Journal.h"
#include "umpd/platform/simulated/SimulatedFiles.h"
#include "umpd/platform/simulated/SimulatedObjects.h"
#include "umpd/platform/simulated/SimulatedRegistry.h"
#include "umpd/platform/simulated/SimulatedSpooler.h"
#include "umpd/platform/simulated/SimulatedSystem.h"

namespace umpd {

enum class WindowsRelease { windows98, nt4, windows2000, vista, windows7 };

// The machine's parts, which must exist before the platform refers to them.
struct SimulatedParts {
  Journal journal;
  SimulatedVersion version{journal};
  SimulatedModules modules{journal};
  SimulatedRegistry registry{journal};
  SimulatedProfiles profiles{journal};
  SimulatedSpooler spooler{journal};
  SimulatedSecurity security{journal};
  SimulatedClock clock{journal};
  SimulatedObjects objects{journal, security, clock};
  SimulatedFiles files{journal};
  SimulatedProcesses processes{journal, objects};
  SimulatedAccounts accounts{journal};
  SimulatedRandom random{journal};
  SimulatedMessages messages{journal};
  SimulatedText text{journal};
  SimulatedMemory memory{journal};
};

class SimulatedPlatform {
 public:
  SimulatedPlatform();

  // The release's version and the run-time functions that it has.
  void become(WindowsRelease release);
  // All that this process holds open.
  size_t openHandles() const;

  SimulatedParts machine;
  Platform platform;
};

}  // namespace umpd
