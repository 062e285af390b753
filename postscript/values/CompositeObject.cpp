#include "postscript/values/CompositeObject.h"

#include <typeinfo>

#include "postscript/values/NameObject.h"
#include "postscript/values/VirtualMemory.h"

namespace postscript {

CompositeData::~CompositeData() = default;

CompositeObject::CompositeObject(VirtualMemoryObject& space, std::unique_ptr<CompositeData> body)
    : PostscriptObject(body->type),
      memory(&space),
      dataIndex(space.takeIndex()),
      data(body.release()) {
  ++data->handles_;
  space.enter(*data);
}

CompositeObject::CompositeObject(const CompositeObject& source, bool sourceIsExecutable)
    : PostscriptObject(source.type),
      memory(source.memory),
      dataIndex(source.dataIndex),
      data(source.data) {
  executable = sourceIsExecutable;
  ++data->handles_;
}

CompositeObject::~CompositeObject() {
  if (--data->handles_ > 0) {
    return;
  }
  if (data->space_) {
    data->space_->lastHandleGone(*data);
  } else {
    delete data;
  }
}

bool endIsSilent(const PostscriptObject& object) {
  return object.type != TypeTag::name || typeid(object) == typeid(NameObject);
}

}  // namespace postscript
