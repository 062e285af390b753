// Connects the converter's debug texts to the system's debugger output when the library is loaded.
#include <windows.h>

#include "support/DebugOutput.h"

namespace {

void toDebugger(const char* text) {
  OutputDebugStringA(text);
}

const bool connected = (postscript::debugReceiver = toDebugger, true);

}  // namespace
