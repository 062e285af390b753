#include "postscript/values/Ex.h"

#include <cstring>

namespace postscript {

const char* Ex::report() {
  // The search stops before the first character without looking at it.
  const char* baseName = file + std::strlen(file);
  while (baseName > file + 1 && baseName[-1] != '\\') {
    --baseName;
  }
  reportText = "[";
  reportText.append(baseName).append(":").append(std::to_string(line)).append("] ").append(message);
  if (reportText.back() != '\n') {
    reportText += '\n';
  }
  return reportText.c_str();
}

}  // namespace postscript
