// The tokenizer alone: a text that is cut in two gives the same tokens as the whole, up to the
// first failure. The first byte says where it is cut.
#include <cstdint>
#include <cstdio>
#include <string>

#include "postscript/engine/Interpreter.h"
#include "postscript/values/Ex.h"

namespace {

using namespace postscript;

// The tokens of a range as text. False when the range ended in a failure.
bool tokensOf(Interpreter& ps, const std::string& range, std::string& out) {
  ps.parser.setRange(range.data(), range.size());
  try {
    while (const Held<> token = ps.hold(ps.parser.nextToken())) {
      out += typeName(token->type);
      out += (token->executable ? " x " : " ") + token->syntaxText() + "\n";
    }
  } catch (const Ex& failure) {
    out += "failed\n";
    return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) {
    return 0;
  }
  const std::string text = std::string(reinterpret_cast<const char*>(data) + 1, size - 1) + "\n";
  const size_t cut = text.size() * data[0] / 255;
  std::string whole, inTwo;
  Interpreter first, second;
  tokensOf(first, text, whole);
  if (tokensOf(second, text.substr(0, cut), inTwo)) {
    tokensOf(second, text.substr(cut), inTwo);
  }
  if (whole != inTwo) {
    std::fprintf(stderr, "whole:\n%s\ncut at %zu:\n%s\n", whole.c_str(), cut, inTwo.c_str());
    __builtin_trap();
  }
  return 0;
}
