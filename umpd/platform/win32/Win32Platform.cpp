// Binds the groups together; none of them has state of its own but for the processes, which need
// the objects to wait on.
#include "umpd/platform/win32/Win32Platform.h"

namespace umpd {

Win32Platform::Win32Platform()
    : platform{system.version,  system.modules, system.registry, system.profiles,  system.spooler,
               system.security, system.objects, system.files,    system.processes, system.accounts,
               system.clock,    system.random,  system.messages, system.text,      system.memory} {}

}  // namespace umpd
