// ObjectStack: a growable stack of counted objects. It serves the engine's three stacks, the
// dictionary stack and, as their elements, arrays (element 0 at the bottom). It never holds null.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "postscript/values/PostscriptObject.h"

namespace postscript {

class ObjectStack {
 public:
  // name: a literal, for people only.
  explicit ObjectStack(const char* stackName) : name(stackName) {}
  ObjectStack(const ObjectStack&) = delete;
  ObjectStack& operator=(const ObjectStack&) = delete;
  ~ObjectStack() { clear(); }

  // Appends and adds one count. Fails on a null pointer.
  void pushChecked(PostscriptObject* object);
  // Makes an object and pushes it; nothing is lost when memory runs out on the way.
  template <class T, class... Arguments>
  T* pushNew(Arguments&&... arguments) {
    makeRoom();
    T* object = new T(std::forward<Arguments>(arguments)...);
    append(object);
    return object;
  }
  // Removes the top and takes one count off. Does not delete: whoever pops decides.
  PostscriptObject* pop();

  int32_t size() const { return static_cast<int32_t>(items.size()); }
  bool empty() const { return items.empty(); }
  // From the bottom; null outside the stack.
  PostscriptObject* at(int64_t index) const {
    return index >= 0 && index < size() ? items[static_cast<size_t>(index)] : nullptr;
  }
  // Null when empty.
  PostscriptObject* top() const { return items.empty() ? nullptr : items.back(); }
  // Replaces; at the index that equals the size, appends. Fails outside.
  void setAt(int64_t index, PostscriptObject* object);
  // Moves the topmost `count` objects to the end of another stack in their order.
  void moveTop(int32_t count, ObjectStack& other);
  // Rotates the topmost `count` objects: the one at `first` of them becomes the deepest.
  void rotateTop(int32_t count, int32_t first);
  // Gives up every item, from the bottom on.
  void clear();

  const char* const name;

 private:
  void makeRoom() {
    if (items.size() == items.capacity()) {
      items.reserve(items.size() * 2 + 8);
    }
  }
  void append(PostscriptObject* object) {
    items.push_back(object);
    ++object->refCount;
  }

  std::vector<PostscriptObject*> items;
};

}  // namespace postscript
