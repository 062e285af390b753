#include "postscript/values/Held.h"

#include "postscript/values/CompositeObject.h"

namespace postscript {

AbandonedObjects::~AbandonedObjects() {
  for (PostscriptObject* object : objects_) {
    release(object);
  }
  for (PostscriptObject* object : counted_) {
    --object->holders;
    giveUp(object);
  }
}

void AbandonedObjects::beginRun() {
  // An object of these with what it holds, and its place.
  constexpr size_t bytesOfObject = 512;
  outside_ = std::uncaught_exceptions();
  share_.resize((objects_.size() + counted_.size()) * bytesOfObject);
  if (objects_.capacity() < objects_.size() + mostInOneFailure) {
    objects_.reserve(2 * objects_.size() + mostInOneFailure);
  }
}

void AbandonedObjects::endFailedRun() {
  std::erase_if(objects_, [](PostscriptObject* object) {
    const bool ends = endIsSilent(*object);
    if (ends) {
      release(object);
    }
    return ends;
  });
}

void AbandonedObjects::count(PostscriptObject* object) {
  counted_.push_back(object);
  ++object->refCount;
  ++object->holders;
}

}  // namespace postscript
