#include "postscript/values/ObjectStack.h"

#include <algorithm>

#include "postscript/values/Ex.h"

namespace postscript {

namespace {
constexpr const char* sourceFile = "postscript/lib/ObjectStack";
}

void ObjectStack::pushChecked(PostscriptObject* object) {
  if (!object) {
    throw Ex(sourceFile, 40, "cannot push null item onto stack");
  }
  makeRoom();
  append(object);
}

PostscriptObject* ObjectStack::pop() {
  if (items.empty()) {
    throw Ex(sourceFile, 48, "pop - expected item on stack");
  }
  PostscriptObject* object = items.back();
  items.pop_back();
  --object->refCount;
  return object;
}

void ObjectStack::setAt(int64_t index, PostscriptObject* object) {
  if (index < 0 || index > size()) {
    throw Ex(sourceFile, 133, "Illegal array index");
  }
  if (index == size()) {
    return pushChecked(object);
  }
  ++object->refCount;
  giveUp(std::exchange(items[static_cast<size_t>(index)], object));
}

void ObjectStack::moveTop(int32_t count, ObjectStack& other) {
  const auto first = items.end() - count;
  other.items.insert(other.items.end(), first, items.end());
  items.erase(first, items.end());
}

void ObjectStack::rotateTop(int32_t count, int32_t first) {
  const auto bottom = items.end() - count;
  std::rotate(bottom, bottom + first, items.end());
}

void ObjectStack::clear() {
  // An item's end may look at this stack, so it is empty before the first goes.
  const std::vector<PostscriptObject*> old = std::exchange(items, {});
  for (PostscriptObject* object : old) {
    giveUp(object);
  }
}

}  // namespace postscript
