// The generated layer: an operator for every name of the language, so that a program runs on past
// what nobody wrote. Each takes its operands, leaves default results and calls its operation in
// GeneratedOps.
#pragma once

namespace postscript {

class DictionaryStack;

// Defines the operators in slot order.
void registerGeneratedLayer(DictionaryStack& dictionaries);

}  // namespace postscript
