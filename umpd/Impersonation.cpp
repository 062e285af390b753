#include "umpd/Impersonation.h"

#include "umpd/Report.h"

void Impersonation::revertToSpooler() {
  if (platform.version.isWin9x()) return;
  spoolerModule = platform.modules.load(u"spoolss.dll");
  if (!spoolerModule) {
    reportLastError(platform, u"LoadLibrary spoolss.dll", serviceNotification);
    return;
  }
  const FunctionAddress revert = platform.modules.find(spoolerModule.get(), "RevertToPrinterSelf");
  if (revert == FunctionAddress{}) {
    reportLastError(platform, u"GetProcAddress RevertToPrinterSelf", serviceNotification);
    spoolerModule.reset();
    return;
  }
  revertToken = platform.spooler.revertToPrinterSelf(revert);
}

void Impersonation::returnToClient() {
  if (spoolerModule && revertToken != TokenHandle{}) {
    const FunctionAddress impersonate =
        platform.modules.find(spoolerModule.get(), "ImpersonatePrinterClient");
    if (impersonate != FunctionAddress{})
      platform.spooler.impersonatePrinterClient(impersonate, revertToken);
  }
  revertToken = {};
  spoolerModule.reset();
}
