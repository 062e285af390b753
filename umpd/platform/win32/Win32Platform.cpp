#include "umpd/platform/win32/Win32Platform.h"

namespace umpd {

Win32Platform::Win32Platform()
    : platform{system.version,  system.modules, system.registry, system.profiles,  system.spooler,
               system.security, system.objects, system.files,    system.processes, system.accounts,
               system.clock,    system.random,  system.messages, system.text,      system.memory} {}

}  // namespace umpd
