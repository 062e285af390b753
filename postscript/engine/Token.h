// Token: what the parser has read. Numbers and names come as plain values: most of them are
// computed with or looked up at once and never need an object.
#pragma once

#include <cstdint>

namespace postscript {

class PostscriptObject;
class Symbol;

struct Token {
  enum class Kind : uint32_t {
    none,     // the input is used up
    integer,  // literal
    real,     // literal
    name,     // executable
    object,   // any other
  };

  static Token ofInteger(int32_t value) {
    Token token{Kind::integer, {}};
    token.integer = value;
    return token;
  }
  static Token ofReal(double value) {
    Token token{Kind::real, {}};
    token.real = value;
    return token;
  }
  static Token ofName(Symbol& value) {
    Token token{Kind::name, {}};
    token.symbol = &value;
    return token;
  }
  static Token ofObject(PostscriptObject* value) {
    Token token{Kind::object, {}};
    token.object = value;
    return token;
  }

  Kind kind = Kind::none;
  union {
    PostscriptObject* object = nullptr;  // new and held by nobody, or a dictionary's own
    Symbol* symbol;                      // good until the next symbol is made
    int32_t integer;
    double real;
  };
};

}  // namespace postscript
