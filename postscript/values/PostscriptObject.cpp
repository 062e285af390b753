#include "postscript/values/PostscriptObject.h"

#include <array>

namespace postscript {

const char* typeName(TypeTag tag) {
  static constexpr std::array names = {
      "ps_boolean", "ps_fontID",   "ps_integer",     "ps_mark",  "ps_name",
      "ps_null",    "ps_operator", "ps_real",        "ps_array", "ps_dictionary",
      "ps_file",    "ps_gstate",   "ps_packedarray", "ps_save",  "ps_string"};
  const auto index = static_cast<uint32_t>(tag);
  return index < names.size() ? names[index] : "unknown";
}

PostscriptObject::~PostscriptObject() = default;

std::string PostscriptObject::describe() const {
  return typeName(type);
}

std::string PostscriptObject::syntaxText() const {
  return describe();
}

std::string PostscriptObject::valueText() const {
  return "--nostringval--";
}

}  // namespace postscript
