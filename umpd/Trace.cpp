// A format is copied up to each `%`, whose letter decides how the next argument is shown.
#include "umpd/Trace.h"

#include <charconv>

#include "support/DebugOutput.h"

namespace umpd {

// By hand: a conversion call could change the last error that a trace is about to show.
std::string traceText(std::u16string_view text) {
  std::string shown;
  for (const char16_t c : text) {
    shown += c < 0x80 ? static_cast<char>(c) : '?';
  }
  return shown;
}

std::string traceText(std::string_view text) {
  return std::string(text);
}

std::string traceText(const char16_t* text) {
  return text ? traceText(std::u16string_view(text)) : "(null)";
}

std::string traceText(const char* text) {
  return text ? text : "(null)";
}

std::string TraceArgument::shownAs(char letter) const {
  if (text_) {
    return *text_;
  }
  char digits[24] = {};
  const bool hexadecimal = letter == 'x';
  // In hexadecimal a number shows its bits, a negative one too.
  const bool showsSign = isNegative_ && !hexadecimal;
  const uint64_t value = showsSign ? 0 - number_ : number_;
  std::to_chars(digits, digits + sizeof digits - 1, value, hexadecimal ? 16 : 10);
  return (showsSign ? "-" : "") + std::string(digits);
}

// Each argument finds its place: TraceFormat counted them when the call was compiled.
std::string formatTrace(std::string_view format, std::span<const TraceArgument> arguments) {
  std::string text;
  for (const TraceArgument& argument : arguments) {
    const size_t place = format.find('%');
    text += format.substr(0, place);
    format.remove_prefix(place + 1);
    text += argument.shownAs(format.empty() ? 's' : format.front());
    format.remove_prefix(format.empty() ? 0 : 1);
  }
  return text.append(format);
}

void writeTrace(std::string_view format, std::span<const TraceArgument> arguments) {
  quillpress::debugOutput(formatTrace(format, arguments).c_str());
}

}  // namespace umpd
