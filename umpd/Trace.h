// Trace: a developer's view into the front end. The calls stay in every build and cost nothing;
// configured with QUILLPRESS_TRACE=ON they write to the debugger's output.
//
// A format reads like printf's, but each argument brings its type along: `%x` shows a number in
// hexadecimal, any other letter shows the argument as what it is. Whether there are as many
// arguments as places is checked when the call is compiled.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace umpd {

#ifdef QUILLPRESS_TRACE
inline constexpr bool tracesAreWritten = true;
#else
inline constexpr bool tracesAreWritten = false;
#endif

// Plain ASCII: any other character of a wide text shows as `?`, a null text as "(null)".
std::string traceText(std::u16string_view text);
std::string traceText(std::string_view text);
std::string traceText(const char16_t* text);
std::string traceText(const char* text);

// A number or a text, on its way into a trace.
class TraceArgument {
 public:
  template <std::integral Number>
  TraceArgument(Number number) : number_(static_cast<uint64_t>(number)) {
    if constexpr (std::is_signed_v<Number>) {
      isNegative_ = number < 0;
    }
  }
  // Handles are numbers too.
  template <class Enumeration>
  requires std::is_enum_v<Enumeration> TraceArgument(Enumeration number)
      : TraceArgument(static_cast<std::underlying_type_t<Enumeration>>(number)) {}
  TraceArgument(const void* address) : TraceArgument(reinterpret_cast<uintptr_t>(address)) {}
  TraceArgument(const std::u16string& text) : text_(traceText(std::u16string_view(text))) {}
  TraceArgument(const std::optional<std::u16string>& text)
      : text_(text ? traceText(std::u16string_view(*text))
                   : traceText(static_cast<char*>(nullptr))) {}
  TraceArgument(const char16_t* text) : text_(traceText(text)) {}
  TraceArgument(const char* text) : text_(traceText(text)) {}

  std::string shownAs(char letter) const;

 private:
  uint64_t number_ = 0;
  bool isNegative_ = false;
  std::optional<std::string> text_;
};

// The text of a format, known to have `places` places.
template <size_t places>
struct TraceFormat {
  consteval TraceFormat(const char* format) : narrow(format) { check(narrow); }
  consteval TraceFormat(const char16_t* format) : wide(format) { check(wide); }

  template <class Text>
  static consteval void check(Text format) {
    size_t found = 0;
    for (const auto c : format) {
      found += c == '%';
    }
    if (found != places) {
      throw "a trace needs as many arguments as its format has places";
    }
  }

  std::string_view narrow;
  std::u16string_view wide;
};

// The format with its arguments put in.
std::string formatTrace(std::string_view format, std::span<const TraceArgument> arguments);
void writeTrace(std::string_view format, std::span<const TraceArgument> arguments);

template <class... Arguments>
void traceMessage(TraceFormat<sizeof...(Arguments)> format, const Arguments&... arguments) {
  static_assert((std::is_constructible_v<TraceArgument, const Arguments&> && ...));
  if constexpr (tracesAreWritten) {
    const std::array<TraceArgument, sizeof...(Arguments)> all{TraceArgument(arguments)...};
    writeTrace(std::string(format.narrow) + traceText(format.wide), all);
  }
}

}  // namespace umpd
