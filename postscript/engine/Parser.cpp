#include "postscript/engine/Parser.h"

#include <array>
#include <string_view>

#include "postscript/engine/DictionaryStack.h"
#include "postscript/values/Ex.h"
#include "postscript/values/IntegerObject.h"
#include "postscript/values/NameObject.h"
#include "postscript/values/NumberToken.h"
#include "postscript/values/RealObject.h"
#include "postscript/values/StringObject.h"
#include "postscript/values/VirtualMemory.h"

namespace postscript {

namespace {

constexpr const char* readFile = "postscript/lib/Parser";
constexpr const char* tokenFile = "Parser";

// The separators of each state, and those of a line: a bit a set. NUL is in every set.
constexpr std::string_view separatorSets[] = {
    "\n\r \t\f()<>[]{}%/",  // scan
    "\n\f\r",               // comment
    "\\()",                 // literalString
    ">",                    // angleString
    "~",                    // ascii85String
    "\n\r \t\f()<>[]{}%/",  // literalName
    "\n\r",                 // a line
};
constexpr unsigned lineSet = 6;

constexpr auto separatorTable = [] {
  std::array<uint8_t, 256> table{};
  table[0] = 0xff;
  for (unsigned set = 0; set < std::size(separatorSets); ++set) {
    for (const char c : separatorSets[set]) {
      auto& bits = table[static_cast<uint8_t>(c)];
      bits = static_cast<uint8_t>(bits | 1u << set);
    }
  }
  return table;
}();

bool isOctal(char c) {
  return c >= '0' && c <= '7';
}

}  // namespace

void Parser::setRange(const char* bytes, size_t length) {
  begin = current = bytes;
  end = bytes + length;
}

char Parser::get() {
  if (atEnd()) {
    throw Ex(readFile, 93, "Cannot get next char when none left");
  }
  return *current++;
}

char Parser::peek() const {
  if (atEnd()) {
    throw Ex(readFile, 108, "Cannot peak next char when none left");
  }
  return *current;
}

void Parser::skip() {
  if (atEnd()) {
    throw Ex(readFile, 116, "Cannot skip when no chars left");
  }
  ++current;
}

void Parser::stepBack() {
  if (!current || current == begin) {
    throw Ex(readFile, 124, "Cannot go back");
  }
  --current;
}

bool Parser::readLine(std::string& line) {
  const std::string savedToken = token;
  const char* savedCurrent = current;
  if (!collect(lineSet)) {
    current = savedCurrent;
    token = savedToken;
    return false;
  }
  line = token;
  token.clear();
  return true;
}

bool Parser::collect(unsigned separatorSet) {
  const unsigned bit = 1u << separatorSet;
  const char* at = current;
  while (at < end && !(separatorTable[static_cast<uint8_t>(*at)] & bit)) {
    ++at;
  }
  checkStringSize(token.size() + static_cast<size_t>(at - current));
  token.append(current, at);
  current = at;
  if (at == end) {
    return false;
  }
  separator = *at;
  return true;
}

PostscriptObject* Parser::nextToken() {
  for (;;) {
    PostscriptObject* object = nullptr;
    if (inEscape) {
      if (atEnd()) {
        return nullptr;
      }
      escape += get();
      stepEscape();
      continue;
    }
    if (!collect(static_cast<unsigned>(state))) {
      return nullptr;
    }
    switch (state) {
      case State::scan:
        object = stepScan();
        break;
      case State::comment:
        takeSeparator();
        backToScan();
        break;
      case State::literalString:
        object = stepLiteralString();
        break;
      case State::angleString:
        object = stepAngleString();
        break;
      case State::ascii85String:
        object = stepAscii85String();
        break;
      case State::literalName:
        object = stepLiteralName();
        break;
    }
    if (object) {
      return object;
    }
  }
}

PostscriptObject* Parser::stepScan() {
  if (!token.empty()) {
    return finishedToken();
  }
  takeSeparator();
  switch (separator) {
    case '/':
      state = State::literalName;
      break;
    case '%':
      state = State::comment;
      break;
    case '(':
      state = State::literalString;
      parenDepth = 0;
      break;
    case '<':
      state = State::angleString;
      break;
    case '[':
    case ']':
    case '{':
    case '}':
      return new NameObject(separator);
    default:  // white space, and a closing bracket that nothing opened
      break;
  }
  return nullptr;
}

PostscriptObject* Parser::finishedToken() {
  PostscriptObject* object = nullptr;
  const NumberToken number = readNumber(token);
  if (number.kind == NumberToken::Kind::integer) {
    object = new IntegerObject(number.integer);
  } else if (number.kind == NumberToken::Kind::real) {
    object = new RealObject(number.real);
  } else {
    object = new NameObject(token);
  }
  token.clear();
  return object;
}

PostscriptObject* Parser::stepLiteralString() {
  takeSeparator();
  switch (separator) {
    case ')':
      if (parenDepth < 1) {
        return finishedString(0, nullptr);
      }
      --parenDepth;
      token += ')';
      break;
    case '(':
      ++parenDepth;
      token += '(';
      break;
    case '\\':
      escape.clear();
      inEscape = true;
      break;
    default:
      throw Ex(tokenFile, 195, "Unexpected separator when parsing for end of literal string");
  }
  return nullptr;
}

// By how much of the escape is there: its first byte says what it is, a second and third may
// follow.
void Parser::stepEscape() {
  const char last = escape.back();
  if (escape.size() == 1) {
    startEscape();
  } else if (!isOctal(escape[0])) {
    // A line's end vanishes with the backslash, and a CR behind it; any other byte is read again.
    if (last != '\r') {
      stepBack();
    }
    inEscape = false;
  } else if (!isOctal(last)) {
    stepBack();
    endOctalEscape();
  } else if (escape.size() == 3) {
    endOctalEscape();
  }
}

void Parser::startEscape() {
  constexpr std::string_view letters = "nrtbf\\()";
  constexpr std::string_view bytes = "\n\r\t\b\f\\()";
  const char c = escape[0];
  const size_t index = letters.find(c);
  if (index != std::string_view::npos) {
    token += bytes[index];
    inEscape = false;
  } else if (c != '\n' && c != '\r' && !isOctal(c)) {
    throw Ex(tokenFile, 235, "Unsupported character escape in string");
  }
}

// Only three octal digits make a byte; fewer are dropped.
void Parser::endOctalEscape() {
  if (isOctal(escape.back())) {
    int value = 0;
    for (const char digit : escape) {
      value = value * 8 + (digit - '0');
    }
    token += static_cast<char>(value & 0xff);
  }
  inEscape = false;
}

PostscriptObject* Parser::stepAngleString() {
  const bool ascii85 = !token.empty() && token.front() == '~';
  const bool closed = ascii85 && token.back() == '~';
  takeSeparator();
  token += separator;
  if (!ascii85) {
    return finishedString(0, "ASCIIHexDecode");
  }
  if (closed) {
    return finishedString(1, "ASCII85Decode");
  }
  // This > is data: from here on only ~ ends the string.
  state = State::ascii85String;
  return nullptr;
}

PostscriptObject* Parser::stepAscii85String() {
  takeSeparator();
  token += separator;
  return finishedString(1, "ASCII85Decode");
}

PostscriptObject* Parser::finishedString(size_t from, const char* filter) {
  auto string = std::make_unique<StringObject>(*memory.current, token.substr(from));
  if (filter) {
    string->filters().emplace_back(filter);
  }
  backToScan();
  return string.release();
}

PostscriptObject* Parser::stepLiteralName() {
  if (token.empty() && separator == '/') {
    takeSeparator();
    token += '/';
    return nullptr;
  }
  PostscriptObject* object = nullptr;
  if (token.size() > 1 && token[0] == '/') {
    object = dictionaries.lookup(std::string_view(token).substr(1));
    if (!object) {
      throw Ex(tokenFile, 147, "Undefined Immediately Evaluated Name");
    }
  } else {
    object = new NameObject(token);
    object->executable = false;
  }
  backToScan();
  return object;
}

void Parser::takeSeparator() {
  ++current;
}

void Parser::backToScan() {
  token.clear();
  state = State::scan;
}

}  // namespace postscript
