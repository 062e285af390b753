// PdfObjectShare: what a converter has added to the object list, as its budget counts it. The list
// belongs to the process and keeps the objects when the converter is gone; so the share is the
// converter's own, and the list knows of no budget. It ends when the list is emptied or the
// converter is closed, whichever comes first.
#pragma once

#include <cstddef>
#include <cstdint>

#include "postscript/painting/PdfObjectList.h"
#include "postscript/values/Budget.h"

namespace postscript {

class PdfObjectShare {
 public:
  PdfObjectShare(Budget& budget, const PdfObjectList& list) : share_(&budget), list_(list) {}

  // Before an object enters the list, with so many bytes of texts and data.
  void take(size_t bytes);
  // It did not, as the list has it already.
  void giveBack(size_t bytes);
  // The same when the data's memory goes from a share of their own to the list.
  void takeData(BudgetShare& data) { data.moveTo(share_); }
  // Gives everything back if the list was emptied.
  void refresh();

 private:
  BudgetShare share_;
  const PdfObjectList& list_;
  uint64_t clearings_ = 0;  // of the list, when the share was taken
};

}  // namespace postscript
