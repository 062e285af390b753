// OperatorList: the operators of the language, for people who write PostScript for this engine.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace quillpress {

// All of them, or those that are named. False if one of the names is no operator.
bool listOperators(std::ostream& out, const std::vector<std::string>& names);

}  // namespace quillpress
