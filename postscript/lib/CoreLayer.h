// The core layer: the hand-written operators of the language. Each takes the place of the generated
// operator of its name.
#ifndef POSTSCRIPT_LIB_CORELAYER_H
#define POSTSCRIPT_LIB_CORELAYER_H

namespace postscript {

class DictionaryStack;

// Defines the 105 operators in the order of registration.
void registerCoreLayer(DictionaryStack& dictionaries);

}  // namespace postscript

#endif
