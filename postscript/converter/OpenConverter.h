// Makes a converter that is ready to run programs.
#pragma once

#include <memory>

#include "postscript/painting/Postscript2Pdf.h"

namespace postscript {

// matrix: six numbers, the page's default coordinate system. The start-up texts have run.
std::unique_ptr<Postscript2Pdf> openConverter(const float* matrix);

}  // namespace postscript
