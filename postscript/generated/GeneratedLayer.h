// The generated layer: an operator for every name of the language, so that a program runs on past
// what nobody wrote. Each takes its operands, leaves default results and calls its slot.
#pragma once

namespace postscript {

class DictionaryStack;

// Defines the 316 operators in slot order.
void registerGeneratedLayer(DictionaryStack& dictionaries);

}  // namespace postscript
