#include "postscript/values/CompositeObject.h"

#include "postscript/values/VirtualMemory.h"

namespace postscript {

CompositeData::~CompositeData() = default;

CompositeObject::CompositeObject(VirtualMemoryObject& space, std::unique_ptr<CompositeData> body)
    : PostscriptObject(body->type),
      memory(&space),
      dataIndex(space.nextIndex()),
      data(space.add(std::move(body))) {}

CompositeObject::CompositeObject(const CompositeObject& source, bool sourceIsExecutable)
    : PostscriptObject(source.type),
      memory(source.memory),
      dataIndex(source.dataIndex),
      data(source.data) {
  executable = sourceIsExecutable;
}

CompositeObject::~CompositeObject() = default;

}  // namespace postscript
