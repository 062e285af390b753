// Parser: turns a range of bytes into tokens, one a call. It is a state machine that can be cut
// anywhere: the engine points it at a new range whenever more input is there, and an unfinished
// token goes on in it. It walks the caller's memory; a token that lies whole in the range is read
// in its place, and only one that is cut, or has escapes, is collected in `token`. Read operators
// take bytes of the same range, at the same position: it is the "current file". Start at next.
#pragma once

#include <string>
#include <string_view>

#include "postscript/engine/Token.h"
#include "postscript/values/Budget.h"
#include "postscript/values/FilterNames.h"
#include "postscript/values/PostscriptObject.h"
#include "postscript/values/Text.h"

namespace postscript {

class DictionaryStack;
struct VirtualMemorySet;

class Parser {
 public:
  Parser(VirtualMemorySet& theMemory, DictionaryStack& theDictionaries);

  // The range to work on, which must stay valid while it is read.
  void setRange(const char* bytes, size_t length);
  // How many bytes of the range have been read.
  size_t position() const { return static_cast<size_t>(current - begin); }
  // The next token; of kind none when the range is used up.
  Token next() {
    if (state == State::scan && token.empty()) {
      const Token inPlace = readInPlace();
      if (inPlace.kind != Token::Kind::none) {
        return inPlace;
      }
    }
    return readInSteps();
  }
  // The same as an object, held by nobody; null when the range is used up.
  PostscriptObject* nextToken();

  // The current file. All but `atEnd` and `readLine` fail where there is no byte.
  bool atEnd() const { return current >= end; }
  char get();
  char peek() const;
  void skip();
  void stepBack();
  // The text up to a line feed, carriage return or NUL byte, which stays unread. False when the
  // range ends first: then nothing was read.
  bool readLine(Text& line);
  // What is left of the range, for those who read many bytes at once, and how much they took.
  std::string_view unread() const { return {current, static_cast<size_t>(end - current)}; }
  void take(size_t bytes) { current += bytes; }

 private:
  // A line is never the parser's state: it has separators of its own.
  enum class State { scan, comment, literalString, angleString, ascii85String, literalName, line };

  // A token that lies whole in the range; of kind none for anything else, which is left unread
  // from its first byte on.
  Token readInPlace();
  Token readRegular(const char* first);
  Token readLiteralName();
  Token readString();
  Token readAngleString();
  Token stringInPlace(std::string_view text, const char* next, const FilterNames& filters);
  // The state machine, for tokens that are cut by a range's end, and for all that is rare.
  Token readInSteps();

  // Collects the token up to a separator of the state, and leaves that unread. False when the
  // range ends first; what was collected stays. The text of a comment is dropped.
  bool collect(State separators);
  static bool isSeparator(char c, State state);
  // The first separator of the state, or the end.
  static const char* endOfRun(const char* at, const char* end, State separators);
  // One step in each state. A token when the step has finished one.
  Token stepScan();
  Token stepLiteralString();
  Token stepAngleString();
  Token stepAscii85String();
  Token stepLiteralName();
  void stepEscape();
  void startEscape();
  void endOctalEscape();

  Token textToken(std::string_view text) const;
  Token nameToken(std::string_view text) const;
  Token literalName(std::string_view text) const;
  Token stringToken(std::string_view text, const FilterNames& filters) const;
  Token finishedString(size_t from, const FilterNames& filters);
  // Before so many bytes are added to the token.
  void expectToken(size_t more);
  void dropToken();
  void takeSeparator() { ++current; }
  void backToScan();

  const char* current = nullptr;
  const char* begin = nullptr;
  const char* end = nullptr;
  Text token;
  BudgetShare tokenShare;
  char separator = 0;
  bool inEscape = false;
  std::string escape;
  VirtualMemorySet& memory;
  DictionaryStack& dictionaries;
  // What applies to each kind of string.
  const FilterNames noFilter_;
  const FilterNames hexFilter_;
  const FilterNames ascii85Filter_;
  State state = State::scan;
  int32_t parenDepth = 0;
};

}  // namespace postscript
