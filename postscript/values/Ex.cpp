#include "postscript/values/Ex.h"

#include <cstring>

namespace postscript {

const char* Ex::report() {
  // The search stops before the first character without looking at it.
  const char* baseName = file + std::strlen(file);
  while (baseName > file + 1 && baseName[-1] != '\\') {
    --baseName;
  }
  reportText_ = "[";
  reportText_.append(baseName)
      .append(":")
      .append(std::to_string(line))
      .append("] ")
      .append(message);
  if (reportText_.back() != '\n') {
    reportText_ += '\n';
  }
  return reportText_.c_str();
}

}  // namespace postscript
