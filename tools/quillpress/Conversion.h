// Conversion: one input from its file to its output, and the report of it. The road of a page:
// InputFile reads the file, DscDocument finds the pages, Job has them converted, PagePress makes
// streams of them, PdfAssembler the PDF file.
#pragma once

#include <string>

#include "tools/quillpress/Options.h"
#include "tools/quillpress/Report.h"

namespace quillpress {

// Writes nothing when the output is empty. What went wrong with the whole of it is the report's
// failure; nothing is thrown.
InputReport convertFile(const std::string& input, const std::string& output,
                        const Options& options);

// Writes the objects that the input's pages name into the options' folder.
InputReport writeObjects(const std::string& input, const Options& options);

}  // namespace quillpress
