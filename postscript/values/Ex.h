// Ex: the one failure that operators raise. It is thrown by value; nothing is tidied up on its way
// to the call that ran the program.
#pragma once

#include <cstdint>
#include <string>

namespace postscript {

class Ex {
 public:
  // theFile, theLine: a label of the product's messages, which users have seen ever since; no place
  // in these sources. A new message takes the file of its family's others and the number after the
  // greatest that is used with it. theFile lives for ever.
  Ex(const char* theFile, int32_t theLine, std::string theMessage)
      : file(theFile), line(theLine), message(std::move(theMessage)) {}

  // "[file:line] message" and a line feed, NUL-terminated, as long as this record lives. The file
  // is shown from behind its last backslash; without one, from its second character on.
  const char* report();

  const char* file;
  int32_t line;
  std::string message;

 private:
  std::string reportText_;
};

}  // namespace postscript
