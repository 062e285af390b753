// Parser: turns a range of bytes into objects, one a call. It is a state machine that can be cut
// anywhere: the engine points it at a new range whenever more input is there, and an unfinished
// token goes on in it. It walks the caller's memory and copies only the token in work. Read
// operators take bytes of the same range, at the same position: it is the "current file".
// Start at nextToken.
#pragma once

#include <string>
#include <string_view>

#include "postscript/values/PostscriptObject.h"

namespace postscript {

class DictionaryStack;
struct VirtualMemorySet;

class Parser {
 public:
  Parser(VirtualMemorySet& memorySet, DictionaryStack& dictionaryStack)
      : memory(memorySet), dictionaries(dictionaryStack) {}

  // The range to work on, which must stay valid while it is read.
  void setRange(const char* bytes, size_t length);
  // How many bytes of the range have been read.
  size_t position() const { return static_cast<size_t>(current - begin); }
  // The next object, or null when the range is used up. A new object, held by nobody; or, for an
  // immediately evaluated name, the dictionary's own.
  PostscriptObject* nextToken();

  // The current file. All but `atEnd` and `readLine` fail where there is no byte.
  bool atEnd() const { return current >= end; }
  char get();
  char peek() const;
  void skip();
  void stepBack();
  // The text up to a line feed, carriage return or NUL byte, which stays unread. False when the
  // range ends first: then nothing was read.
  bool readLine(std::string& line);
  // What is left of the range, for those who read many bytes at once, and how much they took.
  std::string_view unread() const { return {current, static_cast<size_t>(end - current)}; }
  void take(size_t bytes) { current += bytes; }

 private:
  enum class State { scan, comment, literalString, angleString, ascii85String, literalName };

  // Collects the token up to a separator of the state, and leaves that unread. False when the
  // range ends first; what was collected stays.
  bool collect(unsigned separatorSet);
  // One step in each state. An object when the step has finished one.
  PostscriptObject* stepScan();
  PostscriptObject* stepLiteralString();
  PostscriptObject* stepAngleString();
  PostscriptObject* stepAscii85String();
  PostscriptObject* stepLiteralName();
  void stepEscape();
  void startEscape();
  void endOctalEscape();

  PostscriptObject* finishedToken();
  PostscriptObject* finishedString(size_t from, const char* filter);
  void takeSeparator();
  void backToScan();

  const char* current = nullptr;
  const char* begin = nullptr;
  const char* end = nullptr;
  std::string token;
  char separator = 0;
  bool inEscape = false;
  std::string escape;
  VirtualMemorySet& memory;
  DictionaryStack& dictionaries;
  State state = State::scan;
  int32_t parenDepth = 0;
};

}  // namespace postscript
