// The two calls are the spooler library's own and are looked up in it. It stays loaded from the
// step out to the step back; the address for the way back is known before the first step, so that
// nothing can stand in the way later.
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
  impersonate_ = platform_.modules.find(spoolerModule.get(), "ImpersonatePrinterClient");
  revertToken = platform_.spooler.revertToPrinterSelf(revert);
}

void Impersonation::returnToClient() {
  if (spoolerModule && revertToken != TokenHandle{}) {
    if (impersonate_ != FunctionAddress{}) {
      platform_.spooler.impersonatePrinterClient(impersonate_, revertToken);
    }
  }
  revertToken = {};
  impersonate_ = {};
  spoolerModule.reset();
}

}  // namespace umpd
