// Ex: the one failure that operators raise. It is thrown by value; nothing is tidied up on its way
// to the call that ran the program.
#ifndef POSTSCRIPT_LIB_EX_H
#define POSTSCRIPT_LIB_EX_H

#include <cstdint>
#include <string>

namespace postscript {

class Ex {
 public:
  // file: text that lives for ever, as the report shows it. line: the line of the throw.
  Ex(const char* throwingFile, int32_t throwingLine, std::string words)
      : file(throwingFile), line(throwingLine), message(std::move(words)) {}

  // "[file:line] message" and a line feed, NUL-terminated, as long as this record lives. The file
  // is shown from behind its last backslash; without one, from its second character on.
  const char* report();

  const char* file;
  int32_t line;
  std::string message;

 private:
  std::string reportText;
};

}  // namespace postscript

#endif
