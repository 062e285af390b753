#include "postscript/values/StringObject.h"

#include "postscript/values/Ex.h"
#include "postscript/values/Limits.h"

namespace postscript {

namespace {
constexpr const char* sourceFile = "postscript/lib/StringObject";

std::unique_ptr<CompositeData> checkedBody(std::string text) {
  checkStringSize(text.size());
  return std::make_unique<StringData>(std::move(text));
}
}  // namespace

StringData::~StringData() = default;

StringObject::StringObject(VirtualMemoryObject& space, std::string text)
    : CompositeObject(space, checkedBody(std::move(text))) {
  executable = false;
}

std::string StringObject::describe() const {
  return std::string(typeName(type)).append(" ").append(textToNul());
}

std::string StringObject::syntaxText() const {
  return std::string("(").append(textToNul()).append(")");
}

void StringObject::setByte(size_t index, char byte) {
  if (index > text().size()) {
    throw Ex(sourceFile, 54, "String index out of range");
  }
  if (index < text().size()) {
    text()[index] = byte;
  }
}

void StringObject::append(std::string_view bytes) {
  checkStringSize(text().size() + bytes.size());
  text().append(bytes);
}

void checkStringSize(size_t bytes) {
  if (bytes > limits::stringBytes) {
    throw Ex(sourceFile, 20, "string is too long");
  }
}

}  // namespace postscript
