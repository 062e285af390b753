// A release is a version number and a set of functions that its libraries have: all that the front
// end can tell systems apart by.
#include "umpd/platform/simulated/SimulatedPlatform.h"

#include <cstddef>

namespace umpd {
namespace {

OsVersion versionOf(WindowsRelease release) {
  switch (release) {
    case WindowsRelease::windows98:
      return {4, 10, 1};
    case WindowsRelease::nt4:
      return {4, 0, 2};
    case WindowsRelease::windows2000:
      return {5, 0, 2};
    case WindowsRelease::vista:
      return {6, 0, 2};
    case WindowsRelease::windows7:
      break;
  }
  return {6, 1, 2};
}

}  // namespace

SimulatedPlatform::SimulatedPlatform()
    : platform{machine.version,   machine.modules,  machine.registry, machine.profiles,
               machine.spooler,   machine.security, machine.objects,  machine.files,
               machine.processes, machine.accounts, machine.clock,    machine.random,
               machine.messages,  machine.text,     machine.memory} {
  become(WindowsRelease::windows7);
}

// Each release has what the one before it has, and more.
void SimulatedPlatform::become(WindowsRelease release) {
  machine.version.version = versionOf(release);
  auto& present = machine.modules.present;
  present = {{u"advapi32.dll", {}}};
  if (release == WindowsRelease::windows98) {
    return;
  }
  present[u"netapi32.dll"] = {"NetGetDCName", "NetApiBufferFree"};
  present[u"spoolss.dll"] = {"RevertToPrinterSelf", "ImpersonatePrinterClient"};
  if (release == WindowsRelease::nt4) {
    return;
  }
  present[u"advapi32.dll"] = {"RegOpenCurrentUser",
                              "ConvertStringSecurityDescriptorToSecurityDescriptorA"};
  if (release == WindowsRelease::windows2000) {
    return;
  }
  present[u"ieframe.dll"] = {"IEIsProtectedModeProcess"};
}

size_t SimulatedPlatform::openHandles() const {
  return machine.modules.openHandles() + machine.registry.openHandles() +
         machine.spooler.openHandles() + machine.security.openHandles() +
         machine.objects.openHandles() + machine.files.openHandles() + machine.memory.openBlocks();
}

}  // namespace umpd
