#include "postscript/values/VirtualMemory.h"

namespace postscript {

VirtualMemoryObject::~VirtualMemoryObject() {
  for (auto& body : bodies) {
    body.reset();
  }
}

std::string VirtualMemoryObject::describe() const {
  return typeName(type) + (" " + name);
}

CompositeData* VirtualMemoryObject::add(std::unique_ptr<CompositeData> body) {
  bodies.push_back(std::move(body));
  return bodies.back().get();
}

VirtualMemorySet::VirtualMemorySet() {
  auto localSpace = std::make_unique<VirtualMemoryObject>("Local Memory");
  global = new VirtualMemoryObject("Global Memory");
  current = local = localSpace.release();
  ++local->refCount;
  ++global->refCount;
}

VirtualMemorySet::~VirtualMemorySet() {
  giveUp(local);
  giveUp(global);
}

}  // namespace postscript
