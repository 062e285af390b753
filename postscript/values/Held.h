// Held: an object in the hands of the code that works on it, popped from a stack or just made.
//
// On the normal way out the holder releases the object: it is deleted when nobody stores it. On the
// way out by a failure nothing is released; an object that nobody stores goes to the interpreter's
// AbandonedObjects as it is. When the failed run has ended, those go whose end nothing can notice;
// the others stay until the interpreter goes. So what a destructor does (a loop's continuation
// makes its procedure literal again) happens exactly when the object's life ends, never because a
// failure passed by.
#pragma once

#include <exception>
#include <utility>
#include <vector>

#include "postscript/values/Budget.h"
#include "postscript/values/PostscriptObject.h"

namespace postscript {

class AbandonedObjects {
 public:
  explicit AbandonedObjects(Budget* budget = nullptr) : share_(budget) {}
  AbandonedObjects(const AbandonedObjects&) = delete;
  AbandonedObjects& operator=(const AbandonedObjects&) = delete;
  ~AbandonedObjects();

  // A run begins: exceptions that are under way outside it are none of its failures. Room is made
  // for what its failure may leave, so that nothing is lost when memory has run out.
  void beginRun();
  // A run has failed, and the failure has passed all holders.
  void endFailedRun();
  bool failing() const { return std::uncaught_exceptions() > outside_; }
  void add(PostscriptObject* object) noexcept { objects_.push_back(object); }
  // Takes a count that no program gives back.
  void count(PostscriptObject* object);

 private:
  // More than there are holders at work at any one time.
  static constexpr size_t mostInOneFailure = 256;

  std::vector<PostscriptObject*> objects_;
  std::vector<PostscriptObject*> counted_;
  int outside_ = 0;
  BudgetShare share_;
};

template <class T = PostscriptObject>
class Held {
 public:
  Held(AbandonedObjects& whereAbandoned, T* held) : abandoned_(&whereAbandoned), object_(held) {
    if (object_) {
      ++object_->holders;
    }
  }
  Held(Held&& other) noexcept
      : abandoned_(other.abandoned_), object_(std::exchange(other.object_, nullptr)) {}
  template <class U>
  Held(Held<U>&& other) noexcept : abandoned_(other.abandoned_), object_(other.letGo()) {}
  Held(const Held&) = delete;
  Held& operator=(Held&&) = delete;
  ~Held() {
    if (!object_) {
      return;
    }
    --object_->holders;
    if (object_->refCount > 0 || object_->holders > 0) {
      return;
    }
    if (abandoned_->failing()) {
      abandoned_->add(object_);
    } else {
      delete object_;
    }
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  template <class U>
  friend class Held;
  T* letGo() { return std::exchange(object_, nullptr); }

  AbandonedObjects* abandoned_;
  T* object_;
};

}  // namespace postscript
