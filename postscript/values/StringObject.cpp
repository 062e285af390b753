#include "postscript/values/StringObject.h"

#include "postscript/values/Ex.h"
#include "postscript/values/Limits.h"
#include "postscript/values/VirtualMemory.h"

namespace postscript {

namespace {
constexpr const char* sourceFile = "postscript/lib/StringObject";
// What a string takes besides its bytes: body, handle and the end of its text.
constexpr size_t bytesOfString = 208;
}  // namespace

StringData::StringData(Budget& budget, std::string bytes)
    : CompositeData(TypeTag::string), share_(&budget) {
  setText(std::move(bytes));
}

StringData::~StringData() = default;

void StringData::expectSize(size_t bytes) {
  checkStringSize(bytes);
  share_.expectText(text_, bytes, bytesOfString);
}

void StringData::setText(std::string bytes) {
  checkStringSize(bytes.size());
  share_.resize(bytesOfString + bytes.capacity());
  text() = std::move(bytes);
}

std::string StringData::takeText() {
  std::string taken = std::exchange(text(), {});
  share_.resize(bytesOfString);
  return taken;
}

StringObject::StringObject(VirtualMemoryObject& space, std::string text)
    : CompositeObject(space, std::make_unique<StringData>(space.budget(), std::move(text))) {
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
  body().expectSize(text().size() + bytes.size());
  text().append(bytes);
}

void StringObject::setText(std::string bytes) {
  body().setText(std::move(bytes));
}

void checkStringSize(size_t bytes) {
  if (bytes > limits::stringBytes) {
    throw Ex(sourceFile, 20, "string is too long");
  }
}

}  // namespace postscript
