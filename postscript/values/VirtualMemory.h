// VirtualMemory: the spaces that own the bodies of composite objects. There is no collector: a
// body ends with its last handle where nothing can tell, else with its space (see CompositeObject).
// VirtualMemorySet has the two spaces of an interpreter, and the symbols of its names.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "postscript/values/Budget.h"
#include "postscript/values/CompositeObject.h"
#include "postscript/values/PostscriptObject.h"
#include "postscript/values/Symbol.h"

namespace postscript {

struct VirtualMemorySet;

// A space, and also the value that save pushes: then a space without bodies, for its name only.
class VirtualMemoryObject : public PostscriptObject {
 public:
  static constexpr TypeTag tag = TypeTag::save;

  // set: the memory to which the space or value belongs.
  VirtualMemoryObject(std::string name, VirtualMemorySet* set);
  // Ends the bodies, oldest first.
  ~VirtualMemoryObject() override;

  std::string describe() const override;
  // A new, empty space: the bodies stay with the source.
  PostscriptObject* clone() const override {
    return new VirtualMemoryObject(name_, copies_ + 1, set_);
  }

  SymbolTable& symbols() const;
  Budget& budget() const;
  // The place of the next body. Places are not used again.
  uint32_t takeIndex() { return nextIndex_++; }
  // Lists a body, which belongs to the space from now on; a string's belongs to its handles.
  void enter(CompositeData& body);
  void lastHandleGone(CompositeData& body);

 private:
  VirtualMemoryObject(std::shared_ptr<const std::string> name, size_t copies,
                      VirtualMemorySet* set);
  // Whether nothing can tell that the body ends; and whether it holds strings that others hold too.
  struct Elements {
    bool endSilently = true;
    bool haveSharedStrings = false;
  };
  static Elements examine(const CompositeData& body);
  void keepCountsOfStrings(const CompositeData& body);
  void unlink(CompositeData& body);
  void endUnused();

  // The space's name is this, with "Copy of " in front for each of the copies that led to it: the
  // names of a thousand copies of copies take no room.
  const std::shared_ptr<const std::string> name_;
  const size_t copies_;
  VirtualMemorySet* const set_;
  BudgetShare share_;
  uint32_t nextIndex_ = 0;
  CompositeData* first_ = nullptr;  // the oldest
  CompositeData* last_ = nullptr;
  CompositeData* unused_ = nullptr;  // bodies that are to end, by next_
  bool endingUnused_ = false;
  bool ending_ = false;
};

struct VirtualMemorySet {
  VirtualMemorySet();
  VirtualMemorySet(const VirtualMemorySet&) = delete;
  VirtualMemorySet& operator=(const VirtualMemorySet&) = delete;
  ~VirtualMemorySet();

  // A count on the object that nobody gives back while the interpreter lives.
  void keepCount(PostscriptObject& object);

  Budget budget;
  SymbolTable symbols{&budget};
  VirtualMemoryObject* local;
  VirtualMemoryObject* global;
  VirtualMemoryObject* current;  // one of the two: where new bodies go

 private:
  std::vector<PostscriptObject*> kept_;  // whose counts are kept, each once
};

inline SymbolTable& VirtualMemoryObject::symbols() const {
  return set_->symbols;
}
inline Budget& VirtualMemoryObject::budget() const {
  return set_->budget;
}

}  // namespace postscript
