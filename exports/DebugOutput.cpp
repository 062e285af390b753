// Connects the debug texts of both halves to the system's debugger when the library is loaded.
#include "support/DebugOutput.h"

#include <windows.h>

namespace {

void toDebugger(const char* text) {
  OutputDebugStringA(text);
}

const bool connected = (quillpress::debugReceiver = toDebugger, true);

}  // namespace
