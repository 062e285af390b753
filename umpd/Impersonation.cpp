#include "umpd/Impersonation.h"

#include "umpd/Report.h"

void Impersonation::revertToSpooler() {
  if (platform_.version.isWin9x()) return;
  spoolerModule_ = platform_.modules.load(u"spoolss.dll");
  if (!spoolerModule_) {
    reportLastError(platform_, u"LoadLibrary spoolss.dll", serviceNotification);
    return;
  }
  const FunctionAddress revert =
      platform_.modules.find(spoolerModule_.get(), "RevertToPrinterSelf");
  if (revert == FunctionAddress{}) {
    reportLastError(platform_, u"GetProcAddress RevertToPrinterSelf", serviceNotification);
    spoolerModule_.reset();
    return;
  }
  revertToken_ = platform_.spooler.revertToPrinterSelf(revert);
}

void Impersonation::returnToClient() {
  if (spoolerModule_ && revertToken_ != TokenHandle{}) {
    const FunctionAddress impersonate =
        platform_.modules.find(spoolerModule_.get(), "ImpersonatePrinterClient");
    if (impersonate != FunctionAddress{})
      platform_.spooler.impersonatePrinterClient(impersonate, revertToken_);
  }
  revertToken_ = {};
  spoolerModule_.reset();
}
