// ProcessState: what all converters of a process share. There is nothing else. Any number of
// threads may use it at the same time.
#pragma once

#include <atomic>
#include <cstdint>

#include "postscript/painting/PdfObjectList.h"

namespace postscript {

struct ProcessState {
  PdfObjectList pdfObjects;
  // How many saves there were. It serves the names of save objects only.
  std::atomic<uint32_t> saveCounter = 0;
};

ProcessState& processState();

}  // namespace postscript
