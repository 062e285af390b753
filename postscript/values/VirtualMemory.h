// VirtualMemory: the spaces that own the bodies of composite objects. There is no collector: a
// body stays until its space goes. VirtualMemorySet has the two spaces of an interpreter.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "postscript/values/CompositeObject.h"
#include "postscript/values/PostscriptObject.h"

namespace postscript {

// A space, and also the value that save pushes: then a space without bodies, for its name only.
class VirtualMemoryObject : public PostscriptObject {
 public:
  static constexpr TypeTag tag = TypeTag::save;

  explicit VirtualMemoryObject(std::string spaceName)
      : PostscriptObject(tag), name(std::move(spaceName)) {}
  // Deletes the bodies, oldest first.
  ~VirtualMemoryObject() override;

  std::string describe() const override;
  // A new, empty space: the bodies stay with the source.
  PostscriptObject* clone() const override { return new VirtualMemoryObject("Copy of " + name); }

  uint32_t nextIndex() const { return static_cast<uint32_t>(bodies.size()); }
  CompositeData* add(std::unique_ptr<CompositeData> body);

  const std::string name;

 private:
  std::vector<std::unique_ptr<CompositeData>> bodies;
};

struct VirtualMemorySet {
  VirtualMemorySet();
  VirtualMemorySet(const VirtualMemorySet&) = delete;
  VirtualMemorySet& operator=(const VirtualMemorySet&) = delete;
  ~VirtualMemorySet();

  VirtualMemoryObject* local;
  VirtualMemoryObject* global;
  VirtualMemoryObject* current;  // one of the two: where new bodies go
};

}  // namespace postscript
