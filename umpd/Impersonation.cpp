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
