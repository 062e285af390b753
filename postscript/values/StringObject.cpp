#include "postscript/values/StringObject.h"

#include "postscript/values/Ex.h"
#include "postscript/values/VirtualMemory.h"

namespace postscript {

namespace {
constexpr const char* sourceFile = "postscript/lib/StringObject";
// What a string takes besides its bytes: body, handle and the end of its text.
constexpr size_t bytesOfString = 208;
}  // namespace

StringData::StringData(Budget& budget, Text&& bytes)
    : CompositeData(TypeTag::string), text_(std::move(bytes)), share_(&budget) {
  checkStringSize(text_.size());
  share_.resize(bytesOfString + text_.capacity());
}

StringData::~StringData() = default;

void StringData::expectSize(size_t bytes) {
  checkStringSize(bytes);
  share_.expectText(text_, bytes, bytesOfString);
}

void StringData::setText(Text bytes) {
  checkStringSize(bytes.size());
  share_.resize(bytesOfString + bytes.capacity());
  text() = std::move(bytes);
}

Text StringData::takeText() {
  Text taken = std::exchange(text(), {});
  share_.resize(bytesOfString);
  return taken;
}

StringObject::StringObject(VirtualMemoryObject& space, Text text)
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

void StringObject::setText(Text bytes) {
  body().setText(std::move(bytes));
}

void failOnStringSize() {
  throw Ex(sourceFile, 20, "string is too long");
}

}  // namespace postscript
