// CompositeObject: a handle on a body that several handles may share. Handles are counted; a body
// belongs to the memory space in which it was made and lives as long as that space. Deleting a
// handle therefore never touches the body, and a handle may outlive its interpreter.
#pragma once

#include <memory>

#include "postscript/values/PostscriptObject.h"

namespace postscript {

class VirtualMemoryObject;

class CompositeData {
 public:
  explicit CompositeData(TypeTag tag) : type(tag) {}
  CompositeData(const CompositeData&) = delete;
  CompositeData& operator=(const CompositeData&) = delete;
  virtual ~CompositeData();

  const TypeTag type;
};

class CompositeObject : public PostscriptObject {
 public:
  // A first handle: enters the body in the space, which owns it from then on.
  CompositeObject(VirtualMemoryObject& space, std::unique_ptr<CompositeData> body);
  ~CompositeObject() override;

  VirtualMemoryObject* const memory;  // not counted
  const uint32_t dataIndex;           // the body's place in the space
  CompositeData* const data;

 protected:
  // A further handle on the body of another.
  CompositeObject(const CompositeObject& source, bool sourceIsExecutable);
};

}  // namespace postscript
