// JsonReport: what became of the inputs, for programs. docs/report.schema.json describes it.
#pragma once

#include <string>
#include <vector>

#include "tools/quillpress/Report.h"

namespace quillpress {

std::string jsonReport(const std::vector<InputReport>& reports, int exitStatus);

}  // namespace quillpress
