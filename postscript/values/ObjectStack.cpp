#include "postscript/values/ObjectStack.h"

#include <algorithm>

#include "postscript/values/Ex.h"
#include "postscript/values/RealObject.h"
#include "postscript/values/SimpleObjects.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/ObjectStack";

// A new object of a plain value.
PostscriptObject* objectOf(const StackItem& item) {
  switch (item.kind) {
    case StackItem::Kind::integer:
      return new IntegerObject(item.integer);
    case StackItem::Kind::real:
      return new RealObject(item.real);
    case StackItem::Kind::boolean:
      return new BooleanObject(item.boolean);
    case StackItem::Kind::object:
      break;
  }
  return item.object;
}

}  // namespace

void ObjectStack::failOnNull() {
  throw Ex(sourceFile, 40, "cannot push null item onto stack");
}

void ObjectStack::growTo(size_t capacity) {
  // An item is mostly the only holder of its object, which counts here too.
  constexpr size_t bytesOfItem = sizeof(StackItem) + 96;
  share_.resize(capacity * bytesOfItem);
  items_.reserve(capacity);
}

PostscriptObject* ObjectStack::pop() {
  if (items_.empty()) {
    throw Ex(sourceFile, 48, "pop - expected item on stack");
  }
  const StackItem& item = items_.back();
  PostscriptObject* object = item.object;
  if (item.kind == StackItem::Kind::object) {
    --object->refCount;
  } else {
    object = objectOf(item);
  }
  items_.pop_back();
  return object;
}

PostscriptObject* ObjectStack::makeObject(size_t index) const {
  PostscriptObject* object = objectOf(items_[index]);
  ++object->refCount;
  items_[index] = StackItem::ofObject(object);
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
  const StackItem old =
      std::exchange(items_[static_cast<size_t>(index)], StackItem::ofObject(object));
  if (old.kind == StackItem::Kind::object) {
    giveUp(old.object);
  }
}

void ObjectStack::moveTop(int32_t count, ObjectStack& other) {
  const size_t together = other.items_.size() + static_cast<size_t>(count);
  if (together > other.items_.capacity()) {
    other.growTo(together);
  }
  const auto first = items_.end() - count;
  other.items_.insert(other.items_.end(), first, items_.end());
  items_.erase(first, items_.end());
}

void ObjectStack::rotateTop(int32_t count, int32_t first) {
  const auto bottom = items_.end() - count;
  std::rotate(bottom, bottom + first, items_.end());
  std::for_each(bottom, items_.end(), [](StackItem& item) { item.sinceMark = 0; });
}

int32_t ObjectStack::countToMark() const {
  const auto isMark = [](const StackItem& item) {
    return item.kind == StackItem::Kind::object && item.object->type == TypeTag::mark;
  };
  size_t counted = items_.size();
  while (counted > 0 && items_[counted - 1].sinceMark == 0 && !isMark(items_[counted - 1])) {
    --counted;
  }
  uint32_t count = counted > 0 ? items_[counted - 1].sinceMark : 0;
  for (; counted < items_.size(); ++counted) {
    items_[counted].sinceMark = ++count;
  }
  return static_cast<int32_t>(count);
}

void ObjectStack::clear() {
  // An item's end may look at this stack, so it is empty before the first goes.
  const Items old = std::exchange(items_, {});
  share_.resize(0);
  for (const StackItem& item : old) {
    if (item.kind == StackItem::Kind::object) {
      giveUp(item.object);
    }
  }
}

bool ObjectStack::realOfObject(const PostscriptObject* object, NumberOperand& number) {
  const auto* real = as<RealObject>(object);
  if (real) {
    number = NumberOperand::ofReal(real->value);
  }
  return real;
}

TypeTag ObjectStack::typeFromTop(int32_t depth) const {
  const StackItem& item = itemFromTop(depth);
  switch (item.kind) {
    case StackItem::Kind::integer:
      return TypeTag::integer;
    case StackItem::Kind::real:
      return TypeTag::real;
    case StackItem::Kind::boolean:
      return TypeTag::boolean;
    case StackItem::Kind::object:
      break;
  }
  return item.object->type;
}

void ObjectStack::pushCloneFromTop(int32_t depth) {
  StackItem item = itemFromTop(depth);
  item.sinceMark = 0;
  if (item.kind != StackItem::Kind::object) {
    return append(item);
  }
  makeRoom();
  pushChecked(item.object->clone());
}

}  // namespace postscript
