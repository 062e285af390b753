// Boxes have no owner: the code may run in a process without windows.
#include "umpd/Report.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>

#include "umpd/Trace.h"

namespace umpd {

void reportLastError(Platform& platform, const std::u16string& caption, uint32_t flags) {
  // Read first: any other call may change the error.
  const std::u16string text = platform.messages.errorText(platform.messages.lastError())
                                  .value_or(u"Error string not found");
  traceMessage(u"Error: %s GetLastError: %s\n", caption, text);
  platform.messages.box(text, caption, flags);
}

// Formatted twice: the first pass only measures.
void showErrorBox(Platform& platform, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  va_end(arguments);
  std::string text(length > 0 ? static_cast<size_t>(length) : 0, '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, again);
  va_end(again);
  platform.messages.narrowBox(text, "Error", serviceNotification);
}

}  // namespace umpd
