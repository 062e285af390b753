#include "postscript/painting/ProcessState.h"

#include "postscript/painting/ClearPdfObjects.h"

namespace postscript {

ProcessState& processState() {
  static ProcessState state;
  return state;
}

void clearPdfObjects() noexcept {
  processState().pdfObjects.clearPdfObjects();
}

}  // namespace postscript
