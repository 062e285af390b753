// Grammar: expands the symbols of the rules in GrammarRules.h into PostScript. A symbol is written
// as $ and a letter. Values are expressions that leave one object; statements leave the stack as it
// was, unless noise gets in between.
#pragma once

#include <string>

#include "bench/programs/Choices.h"

namespace programs {

class Grammar {
 public:
  // noise: one statement in so many is followed by something that hardly fits; 0 for none.
  // size: after about so many expansions only the shortest rules are taken.
  Grammar(Choices& choices, uint32_t noise, int size)
      : choices_(choices), noise_(noise), left_(size) {}

  // The text of a symbol, or of a text with symbols in it.
  std::string expand(char symbol, int depth = 0);
  std::string expandText(const char* text, int depth = 0);

 private:
  std::string terminal(char symbol);
  std::string number();
  std::string separator();
  std::string sequence(int depth);
  std::string noise(int depth);

  Choices& choices_;
  const uint32_t noise_;
  int left_;
};

}  // namespace programs
