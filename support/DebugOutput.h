// DebugOutput: where texts for a developer's debugger go. Neither half of the library needs an
// operating system for them: the library's build for Windows connects the system's debugger here
// when it is loaded. Without a receiver the texts go nowhere.
#pragma once

namespace quillpress {

using DebugReceiver = void (*)(const char* text);

// Set before any other thread runs, and read by all of them.
inline DebugReceiver debugReceiver = nullptr;

inline void debugOutput(const char* text) {
  if (debugReceiver) {
    debugReceiver(text);
  }
}

}  // namespace quillpress
