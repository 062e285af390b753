#include "tools/quillpress/Advice.h"

#include <algorithm>
#include <initializer_list>

#include "tools/quillpress/SourceText.h"

namespace quillpress {
namespace {

constexpr std::string_view unknownName = "NOTHING TO EXECUTE for ";

// The first row whose conditions hold tells the cause. An empty condition always holds; several
// words in one are alternatives, with | between them.
struct Row {
  std::string_view engine;  // what the engine's words contain
  std::string_view source;  // what the line, or the definition of its last name, contains
  const char* cause;
  const char* words;
  const char* advice;
};

constexpr Row rows[] = {
    {"", "eexec", "embedded-font", "an embedded font is not read",
     "text is not painted anyway; have the program that wrote the file turn text into outlines"},
    {"", "setpagedevice", "setpagedevice", "the call of setpagedevice cannot be made",
     "the page's size is the one that /PageSize or the comments give; another one can be given "
     "with --page-size"},
    {"Could not find image mask", "", "mask-source",
     "a mask whose samples come from a procedure cannot be painted",
     "its samples must stand in a string"},
    {"deocde|expecting width|expecting height|expecting bitsPer|expecting datasource", "",
     "image-dictionary", "an image dictionary lacks an entry, or has one of another type",
     "it must have Width, Height, BitsPerComponent, Decode and DataSource"},
    {"Expected ps_dictionary", "<<|>>", "dictionary-marks",
     "a dictionary between << and >> is not understood",
     "write it as: 9 dict dup begin /Key value def end"},
    {"Expected ps_dictionary", "makepattern", "dictionary-marks", "a pattern cannot be made",
     "write its dictionary without << and >>: 9 dict dup begin /Key value def end"},
    {"Undefined Immediately", "", "immediate-name", "a name after // has no value yet",
     "define it on an earlier line, or write it with no solidus"},
    {"", "widthshow", "widthshow", "a string cannot be spaced out by widthshow",
     "text is not painted anyway"},
    {"", "makefont|definefont|findfont|FontMatrix|scalefont|setfont", "font",
     "a font cannot be set up", "text is not painted anyway"},
    {"", "Encoding", "encoding", "an encoding of text cannot be set up",
     "text is not painted anyway"},
    {"Unsupported type comparison|excpected items", "", "comparison",
     "values of different types are compared",
     "compare values of one type; test with type or known before"},
    {"Unsupported character escape", "", "escape", "a string has a backslash that begins nothing",
     "double the backslash, or have binary data written as hexadecimal"},
    {"Unsupported number type", "", "number", "something that is no number is where one must be",
     ""},
    {"current color conversions|color conversion", "", "color-conversion",
     "the current colour is asked for in another colour model than it was set in", ""},
    {"Stopped on request", "", "stopped", "the conversion was stopped", ""},
    {"bad_alloc|length_error|too large|too long", "", "memory", "there is not enough memory for it",
     "convert fewer pages at a time"},
    {"pop - expected item|rolling - expected|Indexed object|execting stack", "", "underflow",
     "an operator finds fewer operands than it takes", ""},
    {"Expected ", "", "type", "an operator finds an operand of another type than it takes", ""},
};

bool containsOne(std::string_view text, std::string_view alternatives) {
  while (!alternatives.empty()) {
    const std::string_view one = alternatives.substr(0, alternatives.find('|'));
    if (text.find(one) != std::string_view::npos) {
      return true;
    }
    alternatives.remove_prefix(std::min(one.size() + 1, alternatives.size()));
  }
  return false;
}

// What a program defines a name as, or rather the text that follows the name; empty if it does not.
std::string_view definitionOf(std::string_view name, std::string_view text) {
  constexpr size_t enough = 160;
  constexpr std::string_view after = " \t\r\n{[(";
  const std::string key = "/" + std::string(name);
  for (size_t place = text.find(key); place != std::string_view::npos;
       place = text.find(key, place + 1)) {
    const std::string_view rest = text.substr(place + key.size(), enough);
    if (!rest.empty() && after.find(rest[0]) != std::string_view::npos) {
      return rest.substr(0, rest.find("def"));
    }
  }
  return {};
}

std::string_view nameIn(std::string_view engine) {
  const size_t place = engine.find(unknownName);
  return place == std::string_view::npos ? std::string_view()
                                         : engine.substr(place + unknownName.size());
}

Failure unknown(std::string_view name, std::string_view text) {
  Failure failure;
  failure.cause = "unknown-name";
  failure.words = "\"" + printable(name) + "\" is no operator here, and nothing defines it";
  if (!definitionOf(name, text).empty()) {
    failure.words = "\"" + printable(name) + "\" is not defined when it is used";
    failure.advice = "what defines it failed, or comes later";
  } else if (name.size() <= 3) {
    failure.advice = "the page may have lost its prolog: give the whole file";
  } else if (name.find("Encoding") != std::string_view::npos) {
    failure.cause = "encoding";
    failure.advice = "text is not painted anyway";
  }
  return failure;
}

}  // namespace

Failure explain(const FailureContext& context) {
  Failure failure;
  const std::string_view name = nameIn(context.engine);
  const std::string_view definition = definitionOf(context.token, context.text);
  // In a procedure the line that ran says little; the marks stand anywhere in the program then.
  const bool hasMarks = context.engine.find("Expected ps_dictionary") != std::string_view::npos &&
                        context.text.find("<<") != std::string_view::npos;
  const std::string_view marks = hasMarks ? "<<" : "";
  const auto holds = [&](const Row& row) {
    return (row.engine.empty() || containsOne(context.engine, row.engine)) &&
           (row.source.empty() || containsOne(context.line, row.source) ||
            containsOne(definition, row.source) || containsOne(marks, row.source));
  };
  const auto* row = std::find_if(std::begin(rows), std::end(rows), holds);
  if (!name.empty()) {
    failure = unknown(name, context.text);
  } else if (row != std::end(rows)) {
    failure.cause = row->cause;
    failure.words = row->words;
    failure.advice = row->advice;
  } else {
    failure.cause = "other";
    failure.words = "an operator fails";
  }
  // A name of a program may hold any bytes, and be long.
  constexpr size_t longestWords = 160;
  failure.engine = printable(context.engine, longestWords);
  return failure;
}

bool mayFollow(const Failure& failure, std::string_view text) {
  if (failure.cause == "underflow" || failure.cause == "type" || failure.cause == "number") {
    return true;
  }
  const std::string_view name = nameIn(failure.engine);
  return !name.empty() && !definitionOf(name, text).empty();
}

}  // namespace quillpress
