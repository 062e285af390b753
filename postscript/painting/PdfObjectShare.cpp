#include "postscript/painting/PdfObjectShare.h"

namespace postscript {

namespace {
// A record besides its texts and data, with its places in the lists and trees that find it.
constexpr size_t bytesOfRecord = 768;
}  // namespace

void PdfObjectShare::take(size_t bytes) {
  refresh();
  share_.resize(share_.bytes() + bytesOfRecord + bytes);
}

void PdfObjectShare::giveBack(size_t bytes) {
  share_.resize(share_.bytes() - bytesOfRecord - bytes);
}

void PdfObjectShare::refresh() {
  if (clearings_ != list_.clearings()) {
    share_.resize(0);
    clearings_ = list_.clearings();
  }
}

}  // namespace postscript
