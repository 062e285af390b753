#include "postscript/engine/Parser.h"

#include <array>
#include <string_view>
#include <utility>

#include "postscript/engine/ByteScan.h"
#include "postscript/engine/DictionaryStack.h"
#include "postscript/values/Ex.h"
#include "postscript/values/IntegerObject.h"
#include "postscript/values/Limits.h"
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
    "\n\r",                 // line
};

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

// What a byte begins where a token may begin.
enum class LexicalClass : uint8_t { regular, dropped, bracket, comment, slash, string, angle };

constexpr auto lexicalClasses = [] {
  std::array<LexicalClass, 256> table{};
  table[0] = LexicalClass::dropped;
  for (const char c : std::string_view("\n\r \t\f)>")) {
    table[static_cast<uint8_t>(c)] = LexicalClass::dropped;
  }
  for (const char c : std::string_view("[]{}")) {
    table[static_cast<uint8_t>(c)] = LexicalClass::bracket;
  }
  table['%'] = LexicalClass::comment;
  table['/'] = LexicalClass::slash;
  table['('] = LexicalClass::string;
  table['<'] = LexicalClass::angle;
  return table;
}();

Token numberToken(const NumberToken& number) {
  return number.kind == NumberToken::Kind::integer ? Token::ofInteger(number.integer)
                                                   : Token::ofReal(number.real);
}

bool isOctal(char c) {
  return c >= '0' && c <= '7';
}

}  // namespace

Parser::Parser(VirtualMemorySet& theMemory, DictionaryStack& theDictionaries)
    : tokenShare(&theMemory.budget),
      memory(theMemory),
      dictionaries(theDictionaries),
      hexFilter_(memory.budget, "ASCIIHexDecode", {}),
      ascii85Filter_(memory.budget, "ASCII85Decode", {}) {}

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

bool Parser::isSeparator(char c, State state) {
  return separatorTable[static_cast<uint8_t>(c)] & 1u << static_cast<unsigned>(state);
}

const char* Parser::endOfRun(const char* at, const char* end, State separators) {
  switch (separators) {
    case State::comment:
      return findAnyOf<'\n', '\f', '\r', '\0'>(at, end);
    case State::literalString:
      return findAnyOf<'\\', '(', ')', '\0'>(at, end);
    case State::angleString:
      return findAnyOf<'>', '>', '>', '\0'>(at, end);
    case State::ascii85String:
      return findAnyOf<'~', '~', '~', '\0'>(at, end);
    case State::scan:
    case State::literalName:
      for (unsigned length = 16; length == 16 && end - at >= 16; at += length) {
        length = wordLength(at);
      }
      break;
    default:  // short runs
      break;
  }
  while (at < end && !isSeparator(*at, separators)) {
    ++at;
  }
  return at;
}

bool Parser::readLine(Text& line) {
  const char* last = endOfRun(current, end, State::line);
  if (last == end) {
    return false;
  }
  // Text that is left of a token whose end failed comes first.
  expectToken(static_cast<size_t>(last - current));
  line = std::exchange(token, {});
  line.append(current, last);
  tokenShare.resize(0);
  current = last;
  return true;
}

void Parser::expectToken(size_t more) {
  // What is added besides, a byte or two between one run of bytes and the next.
  constexpr size_t single = 4;
  checkStringSize(token.size() + more);
  tokenShare.expectText(token, token.size() + more + single);
}

bool Parser::collect(State separators) {
  const char* last = endOfRun(current, end, separators);
  if (separators != State::comment) {
    expectToken(static_cast<size_t>(last - current));
    token.append(current, last);
  }
  current = last;
  if (last == end) {
    return false;
  }
  separator = *last;
  return true;
}

PostscriptObject* Parser::nextToken() {
  const Token next = this->next();
  switch (next.kind) {
    case Token::Kind::integer:
      return new IntegerObject(next.integer);
    case Token::Kind::real:
      return new RealObject(next.real);
    case Token::Kind::name:
      return new NameObject(*next.symbol);
    case Token::Kind::object:
      return next.object;
    case Token::Kind::none:
      break;
  }
  return nullptr;
}

Token Parser::readInPlace() {
  const auto classHere = [this] { return lexicalClasses[static_cast<uint8_t>(*current)]; };
  for (;;) {
    while (current < end && classHere() == LexicalClass::dropped) {
      ++current;
    }
    if (current == end) {
      return {};
    }
    switch (classHere()) {
      case LexicalClass::regular:
        return readRegular(current);
      case LexicalClass::dropped:
        break;
      case LexicalClass::bracket:
        return nameToken({current++, 1});
      case LexicalClass::comment:
        current = endOfRun(current, end, State::comment);
        if (current == end) {
          state = State::comment;
          return {};
        }
        ++current;
        break;
      case LexicalClass::slash:
        return readLiteralName();
      case LexicalClass::string:
        return readString();
      case LexicalClass::angle:
        return readAngleString();
    }
  }
}

Token Parser::readRegular(const char* first) {
  if (mayBeginNumber(*first)) {
    NumberToken number;
    const char* last = readPlainDecimal(first, end, number);
    if (number && last < end && isSeparator(*last, State::scan)) {
      current = last;
      return numberToken(number);
    }
  }
  const char* last = endOfRun(first, end, State::scan);
  if (last == end) {
    return {};
  }
  current = last;
  return textToken({first, static_cast<size_t>(last - first)});
}

Token Parser::readLiteralName() {
  const char* first = current + 1;
  const char* last = endOfRun(first, end, State::literalName);
  // An immediately evaluated name begins with a second slash.
  if (last == end || (last == first && *last == '/')) {
    return {};
  }
  current = last;
  return literalName({first, static_cast<size_t>(last - first)});
}

// Nested parentheses belong to the text; a backslash is for the long way.
Token Parser::readString() {
  const char* first = current + 1;
  int32_t depth = 0;
  for (const char* at = first; (at = endOfRun(at, end, State::literalString)) < end; ++at) {
    if (*at == '(') {
      ++depth;
    } else if (*at == ')' && depth > 0) {
      --depth;
    } else if (*at == ')') {
      return stringInPlace({first, static_cast<size_t>(at - first)}, at + 1, noFilter_);
    } else {
      break;
    }
  }
  return {};
}

// The text keeps the byte that ends it.
Token Parser::readAngleString() {
  const char* first = current + 1;
  const char* last = endOfRun(first, end, State::angleString);
  if (last == end) {
    return {};
  }
  const bool ascii85 = *first == '~';
  if (ascii85 && last[-1] != '~') {
    // This > is data: from here on only ~ ends the string.
    last = endOfRun(last + 1, end, State::ascii85String);
    if (last == end) {
      return {};
    }
  }
  first += ascii85;
  return stringInPlace({first, static_cast<size_t>(last + 1 - first)}, last + 1,
                       ascii85 ? ascii85Filter_ : hexFilter_);
}

// A string that is too large fails in the state machine, which stays inside of it then.
Token Parser::stringInPlace(std::string_view text, const char* next, const FilterNames& filters) {
  constexpr size_t bytesBeside = 4096;
  if (text.size() >= limits::stringBytes || !memory.budget.hasRoom(text.size() + bytesBeside)) {
    return {};
  }
  current = next;
  return stringToken(text, filters);
}

Token Parser::readInSteps() {
  for (;;) {
    Token step;
    if (inEscape) {
      if (atEnd()) {
        return {};
      }
      escape += get();
      stepEscape();
      continue;
    }
    if (!collect(state)) {
      return {};
    }
    switch (state) {
      case State::scan:
      case State::line:
        step = stepScan();
        break;
      case State::comment:
        takeSeparator();
        backToScan();
        break;
      case State::literalString:
        step = stepLiteralString();
        break;
      case State::angleString:
        step = stepAngleString();
        break;
      case State::ascii85String:
        step = stepAscii85String();
        break;
      case State::literalName:
        step = stepLiteralName();
        break;
    }
    if (step.kind != Token::Kind::none) {
      return step;
    }
  }
}

Token Parser::stepScan() {
  if (!token.empty()) {
    const Token finished = textToken(token);
    dropToken();
    return finished;
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
      return nameToken({&separator, 1});
    default:  // white space, and a closing bracket that nothing opened
      break;
  }
  return {};
}

Token Parser::stepLiteralString() {
  takeSeparator();
  switch (separator) {
    case ')':
      if (parenDepth < 1) {
        return finishedString(0, noFilter_);
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
  return {};
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

Token Parser::stepAngleString() {
  const bool ascii85 = !token.empty() && token.front() == '~';
  const bool closed = ascii85 && token.back() == '~';
  takeSeparator();
  token += separator;
  if (!ascii85) {
    return finishedString(0, hexFilter_);
  }
  if (closed) {
    return finishedString(1, ascii85Filter_);
  }
  // This > is data: from here on only ~ ends the string.
  state = State::ascii85String;
  return {};
}

Token Parser::stepAscii85String() {
  takeSeparator();
  token += separator;
  return finishedString(1, ascii85Filter_);
}

Token Parser::stepLiteralName() {
  if (token.empty() && separator == '/') {
    takeSeparator();
    token += '/';
    return {};
  }
  Token finished;
  if (token.size() > 1 && token[0] == '/') {
    PostscriptObject* value = dictionaries.lookup(std::string_view(token).substr(1));
    if (!value) {
      throw Ex(tokenFile, 147, "Undefined Immediately Evaluated Name");
    }
    finished = Token::ofObject(value);
  } else {
    finished = literalName(token);
  }
  backToScan();
  return finished;
}

Token Parser::textToken(std::string_view text) const {
  if (mayBeginNumber(text[0])) {
    if (const NumberToken number = readNumber(text)) {
      return numberToken(number);
    }
  }
  return nameToken(text);
}

Token Parser::nameToken(std::string_view text) const {
  return Token::ofName(memory.symbols.symbolOf(text));
}

Token Parser::literalName(std::string_view text) const {
  auto* name = new NameObject(memory.symbols, text);
  name->executable = false;
  return Token::ofObject(name);
}

Token Parser::stringToken(std::string_view text, const FilterNames& filters) const {
  memory.budget.expectRoom(text.size());
  auto string = std::make_unique<StringObject>(*memory.current, Text(text));
  string->filters() = filters;
  return Token::ofObject(string.release());
}

Token Parser::finishedString(size_t from, const FilterNames& filters) {
  const Token finished = stringToken(std::string_view(token).substr(from), filters);
  backToScan();
  return finished;
}

void Parser::backToScan() {
  dropToken();
  state = State::scan;
}

// Room for tokens as they usually are stays.
void Parser::dropToken() {
  constexpr size_t usual = 4096;
  token.clear();
  if (token.capacity() > usual) {
    token = {};
    tokenShare.resize(0);
  }
}

}  // namespace postscript
