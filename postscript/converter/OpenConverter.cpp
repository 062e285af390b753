#include "postscript/converter/OpenConverter.h"

#include <string>

#include "postscript/converter/Layers.h"
#include "postscript/converter/StartupTexts.h"
#include "postscript/engine/Interpreter.h"
#include "postscript/values/Ex.h"
#include "support/DebugOutput.h"

namespace postscript {

namespace {

// A failing text is reported to the debugger and ends the start-up; the converter is used as it is.
void runStartupTexts(Interpreter& ps) {
  try {
    for (const char* text : startupTexts) {
      ps.run(text);
    }
  } catch (Ex& ex) {
    quillpress::debugOutput((std::string("Exception in Procset:") + ex.report()).c_str());
  }
}

}  // namespace

std::unique_ptr<Postscript2Pdf> openConverter(const float* matrix) {
  auto converter = std::make_unique<Postscript2Pdf>(matrix);
  Interpreter& ps = *converter->interpreter;
  installLanguage(ps);
  installPaintingLayer(ps, converter.get());
  runStartupTexts(ps);
  return converter;
}

}  // namespace postscript
