// The painting layer: the operators that write PDF text or answer for the graphics state. It comes
// last and takes the place of whatever stands under its names.
#ifndef POSTSCRIPT_LIB_PAINTING_PAINTINGLAYER_H
#define POSTSCRIPT_LIB_PAINTING_PAINTINGLAYER_H

namespace postscript {

class DictionaryStack;
class Postscript2Pdf;

// Defines the 80 operators in the order of registration, each bound to the converter.
void registerPaintingLayer(DictionaryStack& dictionaries, Postscript2Pdf* converter);

}  // namespace postscript

#endif
