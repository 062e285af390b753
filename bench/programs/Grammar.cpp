// Rules are chosen by weight. When the size is used up, or at a depth, only rules of terminals are
// left, so that every expansion ends. Loops have small counts and no procedure runs itself, so that
// the programs end as well; noise leaves the loops out.
#include "bench/programs/Grammar.h"

#include <array>
#include <cstring>
#include <string_view>
#include <vector>

#include "bench/programs/FileData.h"
#include "bench/programs/GrammarRules.h"
#include "bench/programs/OperatorNames.h"

namespace programs {

namespace {

constexpr int deepest = 7;

bool isTerminal(char symbol) {
  return std::strchr("ikguNO", symbol) != nullptr;
}

// Whether the rule's text has terminals only.
bool isLeaf(const Rule& rule) {
  for (const char* at = std::strchr(rule.text, '$'); at; at = std::strchr(at + 1, '$')) {
    if (!isTerminal(at[1])) {
      return false;
    }
  }
  return true;
}

// The rules of one symbol, each as often as its weight says.
struct Choosable {
  std::vector<const char*> all, leaves;
};

std::array<Choosable, 128> rulesBySymbol() {
  std::array<Choosable, 128> table;
  for (const Rule& rule : rules) {
    Choosable& of = table[static_cast<unsigned char>(rule.symbol)];
    for (int i = 0; i < rule.weight; ++i) {
      of.all.push_back(rule.text);
      if (isLeaf(rule)) {
        of.leaves.push_back(rule.text);
      }
    }
  }
  return table;
}

template <size_t size>
std::string oneOf(Choices& choices, const std::array<const char*, size>& texts) {
  return texts[choices.below(static_cast<uint32_t>(size))];
}

}  // namespace

std::string Grammar::expand(char symbol, int depth) {
  static const std::array<Choosable, 128> table = rulesBySymbol();
  --left_;
  if (isTerminal(symbol)) {
    return terminal(symbol);
  }
  if (symbol == 'T') {
    return sequence(depth);
  }
  if (symbol == 'I') {
    return imageStatement(choices_);
  }
  if (symbol == 'F') {
    return readStatement(choices_);
  }
  const Choosable& of = table[static_cast<unsigned char>(symbol)];
  const bool full = (left_ < 0 || depth >= deepest) && !of.leaves.empty();
  const auto& texts = full ? of.leaves : of.all;
  return expandText(texts[choices_.below(static_cast<uint32_t>(texts.size()))], depth + 1);
}

std::string Grammar::expandText(const char* text, int depth) {
  std::string out;
  for (; *text; ++text) {
    if (*text == '$') {
      out += expand(*++text, depth);
    } else {
      out += *text == ' ' ? separator() : std::string(1, *text);
    }
  }
  return out;
}

std::string Grammar::terminal(char symbol) {
  switch (symbol) {
    case 'i':
      return std::to_string(choices_.below(6));
    case 'k':
      return std::to_string(choices_.below(5));
    case 'g':
      return choices_.oneIn(3) ? std::to_string(static_cast<int>(choices_.below(1000)) - 300)
                               : std::to_string(90 * choices_.below(9));
    case 'u':
      return choices_.oneIn(4) ? std::to_string(choices_.below(2))
                               : "0." + std::to_string(choices_.below(1000));
    case 'N':
      return number();
    default:
      return operatorNames[choices_.below(static_cast<uint32_t>(std::size(operatorNames)))];
  }
}

std::string Grammar::number() {
  static constexpr std::array odd = {"2147483647", "-2147483648", "16#fF",  "1e2",     "-1.5",
                                     "12.0625",    "10000.5",     ".001",   "3.",      "+4",
                                     "4294967296", "0.00005",     "1e300",  "36#zz",   "-.5",
                                     "007",        "99999.99995", "0.0005", "-7",      "-0.0",
                                     "8#777",      "123456789",   "2.5e0",  "1000000", "0.99995"};
  const int32_t whole = static_cast<int32_t>(choices_.below(700)) - 60;
  switch (choices_.below(12)) {
    case 0:
      return oneOf(choices_, odd);
    case 1:
    case 2:
    case 3:
    case 4:
      return std::to_string(whole) + "." + std::to_string(choices_.below(10000));
    case 5:
    case 6:
      return std::to_string(choices_.below(10));
    case 7:
      return "0." + std::to_string(choices_.below(100000));
    default:
      return std::to_string(whole);
  }
}

std::string Grammar::separator() {
  static constexpr std::array odd = {"\n", "\r\n", "\t", "  ", " %c x\n", "\f", "\r"};
  return choices_.oneIn(24) ? oneOf(choices_, odd) : " ";
}

std::string Grammar::sequence(int depth) {
  std::string out = expand('S', depth);
  const uint32_t more = left_ < 0 || depth > 4 ? 0 : choices_.below(3);
  for (uint32_t i = 0; i < more; ++i) {
    out += separator() + expand('S', depth);
  }
  if (noise_ != 0 && choices_.oneIn(noise_)) {
    out += " " + noise(depth);
  }
  return out;
}

std::string Grammar::noise(int depth) {
  static constexpr std::array odd = {"]",       "}",    "exit", "stop", "end",   "pop",  "mark",
                                     "{",       "(abc", ">",    "<~",   "begin", "exch", "[",
                                     "null",    ")",    "$Q",   "<ab",  "//x",   "1e-7", "(\\z)",
                                     "-1.5E-3", "roll", "cvx",  ">>",   "<<",    "/"};
  if (choices_.oneIn(3)) {
    return expandText(odd[choices_.below(static_cast<uint32_t>(odd.size()))], depth + 1);
  }
  std::string out;
  for (uint32_t operands = choices_.below(5); operands > 0; --operands) {
    out += expand('x', depth + 2) + " ";
  }
  return out + terminal('O');
}

}  // namespace programs
