// The walk ends at the first printer that the callback accepts. Only printers of the product's own
// driver are looked at: a port may serve others too.
#include "umpd/PrinterList.h"

#include <algorithm>
#include <cstdint>

#include "umpd/ProductNames.h"
#include "umpd/platform/WideText.h"

namespace umpd {

PrinterIteratorCallback::~PrinterIteratorCallback() = default;

bool enumeratePrinters(Platform& platform, PrinterIteratorCallback& callback) {
  const uint32_t size = platform.spooler.printersSize();
  if (size == 0) {
    return false;
  }
  const auto printers = platform.spooler.printers(size);
  return printers && std::any_of(printers->begin(), printers->end(),
                                 [&](const PrinterInfo& printer) { return callback(printer); });
}

// A port is called by its name or, where a name cannot hold backslashes, with commas in their
// place. The wanted name may be either; the printer's port is tried as both.
bool FindPort::operator()(const PrinterInfo& info) {
  if (!info.driverName || !equalsIgnoringCase(*info.driverName, defaultPrinterName)) {
    return false;
  }
  if (!info.portName) {
    return false;
  }
  if (!equalsIgnoringCase(*info.portName, sought_) &&
      !equalsIgnoringCase(withCommas(*info.portName), sought_)) {
    return false;
  }
  name_ = info.printerName.value_or(u"");
  return true;
}

}  // namespace umpd
