// Token: what the parser has read. Numbers and names come as plain values: most of them are
// computed with or looked up at once and never need an object.
#pragma once

#include <cstdint>

namespace postscript {

class PostscriptObject;
class Symbol;

struct Token {
  enum class Kind : uint8_t {
    none,     // the input is used up
    integer,  // literal
    real,     // literal
    name,     // executable
    object,   // any other
  };

  Kind kind = Kind::none;
  int32_t integer = 0;
  double real = 0;
  Symbol* symbol = nullptr;            // of a name; good until the next symbol is made
  PostscriptObject* object = nullptr;  // new and held by nobody, or a dictionary's own
};

}  // namespace postscript
