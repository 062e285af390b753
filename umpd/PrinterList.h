// PrinterList: a walk over the printers that the user has, and the search for one by its port.
#pragma once

#include <string>
#include <string_view>

#include "umpd/platform/Platform.h"

namespace umpd {

class PrinterIteratorCallback {
 public:
  virtual ~PrinterIteratorCallback();
  // True stops the walk.
  virtual bool operator()(const PrinterInfo& info) = 0;
};

// True if the callback stopped the walk.
bool enumeratePrinters(Platform& platform, PrinterIteratorCallback& callback);

// Looks for the product's printer on a port.
class FindPort : public PrinterIteratorCallback {
 public:
  FindPort(std::u16string_view sought, std::u16string& name) : sought_(sought), name_(name) {}
  bool operator()(const PrinterInfo& info) override;

 private:
  std::u16string_view sought_;
  std::u16string& name_;
};

}  // namespace umpd
