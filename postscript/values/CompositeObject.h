// CompositeObject: a handle on a body that several handles may share. Handles are counted by those
// who store them, as all objects are; a body belongs to the memory space in which it was made.
//
// A body ends with its space at the latest. It ends with its last handle if nothing can tell: a
// string's always, any other one when giving up its elements changes no count and runs no
// destructor that a program could notice (see mayGiveUp). A handle may outlive its interpreter:
// the body is an empty shell then, and goes with it.
#pragma once

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

  // Whether the body may end before its space does.
  virtual bool mayGo() const = 0;
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
// Whether a body that ends early may give up this element. The count of a string shows in what the
// read operators do, so another holder's string keeps the body's count; and the end of a loop's
// continuation makes its procedure literal.
bool mayGiveUp(const PostscriptObject& element);

}  // namespace postscript
