// CompositeObject: a handle on a body that several handles may share. Handles are counted by those
// who store them, as all objects are; a body belongs to the memory space in which it was made.
//
// A body ends with its space at the latest, and with its last handle if nothing can tell. That is
// so unless it is the last to hold a loop's continuation, whose end makes a procedure literal. The
// count of a string shows in what the read operators do, so a string that others hold too keeps the
// body's count. A handle may outlive its interpreter: the body is an empty shell then, and goes
// with it.
#pragma once

#include <functional>
#include <memory>

#include "postscript/values/PostscriptObject.h"

namespace postscript {

class VirtualMemoryObject;

class CompositeData : public objectPool::Pooled {
 public:
  explicit CompositeData(TypeTag theType) : type(theType) {}
  CompositeData(const CompositeData&) = delete;
  CompositeData& operator=(const CompositeData&) = delete;
  virtual ~CompositeData();

  using Visit = std::function<void(PostscriptObject&)>;

  // Calls it for each object that the body holds.
  virtual void forEachElement(const Visit& visit) const = 0;
  // Gives up everything that the body holds.
  virtual void clearContents() = 0;

  const TypeTag type;

 private:
  friend class CompositeObject;
  friend class VirtualMemoryObject;

  int32_t handles_ = 0;
  // The space that lists the body, null for none, and its neighbours there.
  VirtualMemoryObject* space_ = nullptr;
  CompositeData* previous_ = nullptr;
  CompositeData* next_ = nullptr;
};

class CompositeObject : public PostscriptObject {
 public:
  // A first handle: enters the body in the space, which owns it from then on.
  CompositeObject(VirtualMemoryObject& space, std::unique_ptr<CompositeData> body);
  ~CompositeObject() override;

  // Whether nobody but the holder of this popped handle can reach the body.
  bool isAlone() const { return refCount < 1 && holders == 1 && data->handles_ == 1; }

  VirtualMemoryObject* const memory;  // not counted
  const uint32_t dataIndex;           // the body's place in the space
  CompositeData* const data;

 protected:
  // A further handle on the body of another.
  CompositeObject(const CompositeObject& source, bool sourceIsExecutable);
};

// Whether the end of an object does nothing that a program could notice, as that of a loop's
// continuation does.
bool endIsSilent(const PostscriptObject& object);

}  // namespace postscript
