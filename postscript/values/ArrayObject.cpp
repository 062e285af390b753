#include "postscript/values/ArrayObject.h"

#include "postscript/values/Ex.h"
#include "postscript/values/Limits.h"
#include "postscript/values/VirtualMemory.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/ArrayObject";

// Arrays can hold themselves, so the depth is limited; and they can hold one array or string many
// times over, so the length is, too.
void appendSyntaxText(const ArrayObject& array, int depth, std::string& text) {
  text += '[';
  for (int32_t i = 0; i < array.items().size(); ++i) {
    if (depth > limits::nesting || text.size() > limits::printedText) {
      throw Ex(sourceFile, 101, "array is nested too deep or too large to print");
    }
    // When the text moves, its old memory stands beside twice as much for a while.
    array.memory->budget().expectRoom(3 * text.size());
    const PostscriptObject* item = array.items().at(i);
    if (!item) {
      text += "-invalid null ob-";
    } else if (const auto* inner = as<ArrayObject>(item)) {
      appendSyntaxText(*inner, depth + 1, text);
    } else {
      text += item->syntaxText();
    }
    text += ' ';
  }
  text += ']';
}

}  // namespace

ArrayData::~ArrayData() = default;

ArrayObject::ArrayObject(VirtualMemoryObject& space, char kind)
    : CompositeObject(space, std::make_unique<ArrayData>(space.budget(), kind)) {
  runBy = RunBy::array;
  executable = false;
}

ArrayObject::ArrayObject(const ArrayObject& source)
    : CompositeObject(source, source.executable), execIndex(source.execIndex) {
  runBy = RunBy::array;
}

std::string ArrayObject::describe() const {
  std::string text = typeName(type) + (", size=" + std::to_string(items().size()));
  if (executable) {
    text += ", exec index=" + std::to_string(execIndex);
  }
  return text;
}

std::string ArrayObject::syntaxText() const {
  std::string text;
  appendSyntaxText(*this, 1, text);
  return text;
}

PostscriptObject* ArrayObject::element(int32_t index) const {
  PostscriptObject* item = items().at(index);
  if (!item) {
    throw Ex(sourceFile, 78, "No object at given array index");
  }
  return item;
}

void makeLiteral(PostscriptObject* object) {
  auto* array = as<ArrayObject>(object);
  if (!array || !array->isProcedure()) {
    return;
  }
  array->executable = false;
  array->execIndex = 0;
}

}  // namespace postscript
