// ObjectStack: a growable stack of counted objects. It serves the engine's three stacks, the
// dictionary stack and, as their elements, arrays (element 0 at the bottom). It never holds null.
//
// A number or boolean that was just computed or read is kept as a plain value until somebody asks
// for the object: then it becomes one, in its place. As nobody else can hold such an object before,
// and its clone is no different from it, nothing tells the two apart; a number that is only
// computed with never becomes an object at all.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "postscript/values/Budget.h"
#include "postscript/values/IntegerObject.h"
#include "postscript/values/PostscriptObject.h"

namespace postscript {

// One place of a stack.
struct StackItem {
  enum class Kind : uint32_t { object, integer, real, boolean };

  static StackItem ofObject(PostscriptObject* theObject) {
    StackItem item;
    item.object = theObject;
    return item;
  }
  static StackItem ofInteger(int32_t value) {
    StackItem item;
    item.kind = Kind::integer;
    item.integer = value;
    return item;
  }
  static StackItem ofReal(double value) {
    StackItem item;
    item.kind = Kind::real;
    item.real = value;
    return item;
  }
  static StackItem ofBoolean(bool value) {
    StackItem item;
    item.kind = Kind::boolean;
    item.boolean = value;
    return item;
  }

  Kind kind = Kind::object;
  // How many items there are above the mark up to this one, or 0 when nobody has counted them.
  uint32_t sinceMark = 0;
  union {
    PostscriptObject* object;
    int32_t integer;
    double real;
    bool boolean;
  };

 private:
  StackItem() : object(nullptr) {}
};

// A number on a stack, in either form.
struct NumberOperand {
  static NumberOperand ofInteger(int32_t value) {
    return {false, value, static_cast<double>(value)};
  }
  static NumberOperand ofReal(double value) { return {true, 0, value}; }

  bool isReal = false;
  int32_t integer = 0;
  double real = 0;  // the value, of an integer too
};

class ObjectStack {
 public:
  // name: a literal, for people only. budget: null for a stack that nobody limits.
  explicit ObjectStack(const char* theName, Budget* budget = nullptr)
      : name(theName), share_(budget) {}
  ObjectStack(const ObjectStack&) = delete;
  ObjectStack& operator=(const ObjectStack&) = delete;
  ~ObjectStack() { clear(); }

  // Appends and adds one count. Fails on a null pointer.
  void pushChecked(PostscriptObject* object) {
    if (!object) {
      failOnNull();
    }
    append(StackItem::ofObject(object));
    ++object->refCount;
  }
  // Makes an object and pushes it; nothing is lost when memory runs out on the way.
  template <class T, class... Arguments>
  T* pushNew(Arguments&&... arguments) {
    makeRoom();
    T* object = new T(std::forward<Arguments>(arguments)...);
    pushChecked(object);
    return object;
  }
  // New numbers and booleans.
  void pushInteger(int32_t value) { append(StackItem::ofInteger(value)); }
  void pushReal(double value) { append(StackItem::ofReal(value)); }
  void pushBoolean(bool value) { append(StackItem::ofBoolean(value)); }

  // Removes the top and takes one count off. Does not delete: whoever pops decides.
  PostscriptObject* pop();

  int32_t size() const { return static_cast<int32_t>(items_.size()); }
  bool empty() const { return items_.empty(); }
  // From the bottom; null outside the stack.
  PostscriptObject* at(int64_t index) const {
    return index >= 0 && index < size() ? objectAt(static_cast<size_t>(index)) : nullptr;
  }
  // Null when empty.
  PostscriptObject* top() const { return items_.empty() ? nullptr : objectAt(items_.size() - 1); }
  bool topIs(const PostscriptObject* object) const {
    return !items_.empty() && items_.back().kind == StackItem::Kind::object &&
           items_.back().object == object;
  }
  // Replaces; at the index that equals the size, appends. Fails outside.
  void setAt(int64_t index, PostscriptObject* object);
  // Moves the topmost `count` objects to the end of another stack in their order.
  void moveTop(int32_t count, ObjectStack& other);
  // Rotates the topmost `count` objects: the one at `first` of them becomes the deepest.
  void rotateTop(int32_t count, int32_t first);
  // Gives up every item, from the bottom on.
  void clear();

  // Work on items in their place, without making objects of plain values.
  // depth: 0 for the top; must be below the size.
  const StackItem& itemFromTop(int32_t depth) const {
    return items_[items_.size() - 1 - static_cast<size_t>(depth)];
  }
  // Whether the item is a number; then `number` has its value.
  bool numberFromTop(int32_t depth, NumberOperand& number) const {
    const StackItem& item = itemFromTop(depth);
    switch (item.kind) {
      case StackItem::Kind::integer:
        number = NumberOperand::ofInteger(item.integer);
        return true;
      case StackItem::Kind::real:
        number = NumberOperand::ofReal(item.real);
        return true;
      case StackItem::Kind::boolean:
        return false;
      case StackItem::Kind::object:
        break;
    }
    if (const auto* integer = as<IntegerObject>(item.object)) {
      number = NumberOperand::ofInteger(integer->value);
      return true;
    }
    return realOfObject(item.object, number);
  }
  TypeTag typeFromTop(int32_t depth) const;
  // Pushes a clone of the item: the same as cloning its object.
  void pushCloneFromTop(int32_t depth);
  void swapTopTwo() {
    StackItem& top = items_[items_.size() - 1];
    StackItem& next = items_[items_.size() - 2];
    std::swap(top, next);
    top.sinceMark = next.sinceMark = 0;
  }
  // How many items there are above the topmost mark, or in all when there is none. Each item
  // remembers its count, which holds as long as the item stays: so items are counted once.
  int32_t countToMark() const;
  // Calls it for every item that is an object, plain values aside.
  template <class Visit>
  void forEachObject(const Visit& visit) const {
    for (const StackItem& item : items_) {
      if (item.kind == StackItem::Kind::object) {
        visit(*item.object);
      }
    }
  }
  // Gives up the topmost items; there must be so many.
  void drop(int32_t count = 1) {
    for (; count > 0; --count) {
      const StackItem item = items_.back();
      items_.pop_back();
      if (item.kind == StackItem::Kind::object) {
        giveUp(item.object);
      }
    }
  }

  const char* const name;

 private:
  using Items = std::vector<StackItem, objectPool::Allocator<StackItem>>;

  PostscriptObject* objectAt(size_t index) const {
    const StackItem& item = items_[index];
    return item.kind == StackItem::Kind::object ? item.object : makeObject(index);
  }
  // The object of a plain value, which takes its place.
  PostscriptObject* makeObject(size_t index) const;
  [[noreturn]] static void failOnNull();
  static bool realOfObject(const PostscriptObject* object, NumberOperand& number);
  void makeRoom() {
    if (items_.size() == items_.capacity()) [[unlikely]] {
      growTo(items_.size() * 2 + 8);
    }
  }
  void append(const StackItem& item) {
    makeRoom();
    items_.push_back(item);
  }
  void growTo(size_t capacity);

  mutable Items items_;
  BudgetShare share_;
};

}  // namespace postscript
