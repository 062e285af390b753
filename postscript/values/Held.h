// Held: an object in the hands of the code that works on it, popped from a stack or just made.
//
// On the normal way out the holder releases the object: it is deleted when nobody stores it. On the
// way out by a failure nothing is released; an object that nobody stores goes to the interpreter's
// AbandonedObjects as it is, and is reclaimed with the interpreter. So what a destructor does (a
// loop's continuation makes its procedure literal again) happens exactly when the object's life
// ends, never because a failure passed by.
#pragma once

#include <exception>
#include <utility>
#include <vector>

#include "postscript/values/PostscriptObject.h"

namespace postscript {

class AbandonedObjects {
 public:
  ~AbandonedObjects() {
    for (PostscriptObject* object : objects) {
      release(object);
    }
    for (PostscriptObject* object : counted) {
      --object->holders;
      giveUp(object);
    }
  }

  // A run begins: exceptions that are under way outside it are none of its failures.
  void beginRun() { outside = std::uncaught_exceptions(); }
  bool failing() const { return std::uncaught_exceptions() > outside; }
  // Without the memory to remember it the object is lost, which is all that is left to do.
  void add(PostscriptObject* object) noexcept {
    try {
      objects.push_back(object);
    } catch (...) {
    }
  }
  // Takes a count that no program gives back.
  void count(PostscriptObject* object) {
    counted.push_back(object);
    ++object->refCount;
    ++object->holders;
  }

 private:
  std::vector<PostscriptObject*> objects;
  std::vector<PostscriptObject*> counted;
  int outside = 0;
};

template <class T = PostscriptObject>
class Held {
 public:
  Held(AbandonedObjects& whereAbandoned, T* held) : abandoned(&whereAbandoned), object(held) {
    if (object) {
      ++object->holders;
    }
  }
  Held(Held&& other) noexcept
      : abandoned(other.abandoned), object(std::exchange(other.object, nullptr)) {}
  template <class U>
  Held(Held<U>&& other) noexcept : abandoned(other.abandoned), object(other.letGo()) {}
  Held(const Held&) = delete;
  Held& operator=(Held&&) = delete;
  ~Held() {
    if (!object) {
      return;
    }
    --object->holders;
    if (object->refCount > 0 || object->holders > 0) {
      return;
    }
    if (abandoned->failing()) {
      abandoned->add(object);
    } else {
      delete object;
    }
  }

  T* get() const { return object; }
  T* operator->() const { return object; }
  T& operator*() const { return *object; }
  explicit operator bool() const { return object != nullptr; }

 private:
  template <class U>
  friend class Held;
  T* letGo() { return std::exchange(object, nullptr); }

  AbandonedObjects* abandoned;
  T* object;
};

}  // namespace postscript
