// The two calls are the spooler library's own and are looked up in it, each when it is needed. The
// library stays loaded from the step out to the step back. A look-up in a loaded library takes no
// memory, so that a destructor may take the step back too.
#include "umpd/Impersonation.h"

#include "umpd/Report.h"

namespace umpd {

void Impersonation::revertToSpooler() {
  if (platform_.version.isWin9x()) {
    return;
  }
  spoolerModule = platform_.modules.load(u"spoolss.dll");
  if (!spoolerModule) {
    reportLastError(platform_, u"LoadLibrary spoolss.dll", serviceNotification);
    return;
  }
  const FunctionAddress revert = platform_.modules.find(spoolerModule.get(), "RevertToPrinterSelf");
  if (revert == FunctionAddress{}) {
    reportLastError(platform_, u"GetProcAddress RevertToPrinterSelf", serviceNotification);
    spoolerModule.reset();
    return;
  }
  revertToken = platform_.spooler.revertToPrinterSelf(revert);
}

void Impersonation::returnToClient() {
  if (spoolerModule && revertToken != TokenHandle{}) {
    const FunctionAddress impersonate =
        platform_.modules.find(spoolerModule.get(), "ImpersonatePrinterClient");
    if (impersonate != FunctionAddress{}) {
      platform_.spooler.impersonatePrinterClient(impersonate, revertToken);
    }
  }
  revertToken = {};
  spoolerModule.reset();
}

}  // namespace umpd
