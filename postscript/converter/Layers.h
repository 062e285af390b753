// The layers of operators in the system dictionary of a converter. Each takes the place of earlier
// operators of its names: the generated layer has an operator for every name of the language, the
// core layer the language as it is written by hand, the painting layer what makes PDF text.
#pragma once

namespace postscript {

class Interpreter;
class Postscript2Pdf;

// The generated layer, the core layer over it, and the plain values of the system dictionary.
void installLanguage(Interpreter& ps);
// Each of these defines one layer. The order of calls is that of installLanguage.
void installGeneratedLayer(Interpreter& ps);
void installCoreLayer(Interpreter& ps);
void installPaintingLayer(Interpreter& ps, Postscript2Pdf* converter);

}  // namespace postscript
