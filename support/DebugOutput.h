// The debugger's output. The converter needs nothing of an operating system; where one has such an
// output the library's build connects it here. Without a receiver the texts go nowhere.
#pragma once

namespace postscript {

using DebugReceiver = void (*)(const char* text);

inline DebugReceiver debugReceiver = nullptr;

inline void debugOutput(const char* text) {
  if (debugReceiver) debugReceiver(text);
}

}  // namespace postscript
