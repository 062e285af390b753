// The end of one body can be that of the last handle on another, and so on down a nest of any
// depth. Such bodies are put on a list and ended one after another, never one inside the other.
#include "postscript/values/VirtualMemory.h"

#include <memory>
#include <new>

namespace postscript {

namespace {
constexpr size_t bytesOfSpace = 192;
}  // namespace

VirtualMemoryObject::VirtualMemoryObject(std::shared_ptr<const std::string> name, size_t copies,
                                         VirtualMemorySet* set)
    : PostscriptObject(tag),
      name_(std::move(name)),
      copies_(copies),
      set_(set),
      share_(&set->budget, bytesOfSpace) {}

VirtualMemoryObject::VirtualMemoryObject(std::string name, VirtualMemorySet* set)
    : VirtualMemoryObject(std::allocate_shared<const std::string>(
                              objectPool::Allocator<std::string>(), std::move(name)),
                          0, set) {}

VirtualMemoryObject::~VirtualMemoryObject() {
  ending_ = true;
  while (CompositeData* body = first_) {
    unlink(*body);
    // A handle may be left beyond the interpreter's end, and then the empty body goes with it.
    body->clearContents();
    if (body->handles_ == 0) {
      delete body;
    } else {
      body->space_ = nullptr;
    }
  }
}

std::string VirtualMemoryObject::describe() const {
  constexpr std::string_view copyOf = "Copy of ";
  std::string text = typeName(type);
  const size_t length = text.size() + 1 + copies_ * copyOf.size() + name_->size();
  set_->budget.expectRoom(length);
  text.reserve(length);
  text += ' ';
  for (size_t i = 0; i < copies_; ++i) {
    text += copyOf;
  }
  return text += *name_;
}

void VirtualMemoryObject::enter(CompositeData& body) {
  if (body.type == TypeTag::string) {
    return;
  }
  body.space_ = this;
  body.previous_ = last_;
  (last_ ? last_->next_ : first_) = &body;
  last_ = &body;
}

void VirtualMemoryObject::unlink(CompositeData& body) {
  (body.previous_ ? body.previous_->next_ : first_) = body.next_;
  (body.next_ ? body.next_->previous_ : last_) = body.previous_;
  body.previous_ = body.next_ = nullptr;
}

void VirtualMemoryObject::lastHandleGone(CompositeData& body) {
  if (ending_) {
    return;
  }
  const Elements elements = examine(body);
  if (!elements.endSilently) {
    return;
  }
  if (elements.haveSharedStrings) {
    try {
      keepCountsOfStrings(body);
    } catch (const std::bad_alloc&) {
      return;  // without memory for the counts the body stays until its space goes
    }
  }
  unlink(body);
  body.next_ = unused_;
  unused_ = &body;
  if (!endingUnused_) {
    endUnused();
  }
}

static bool isSharedString(const PostscriptObject& element) {
  return element.type == TypeTag::string && (element.refCount > 1 || element.holders > 0);
}

VirtualMemoryObject::Elements VirtualMemoryObject::examine(const CompositeData& body) {
  Elements elements;
  body.forEachElement([&elements](const PostscriptObject& element) {
    elements.endSilently &= element.refCount > 1 || endIsSilent(element);
    elements.haveSharedStrings |= isSharedString(element);
  });
  return elements;
}

void VirtualMemoryObject::keepCountsOfStrings(const CompositeData& body) {
  body.forEachElement([this](PostscriptObject& element) {
    if (isSharedString(element)) {
      set_->keepCount(element);
    }
  });
}

void VirtualMemoryObject::endUnused() {
  endingUnused_ = true;
  while (CompositeData* body = unused_) {
    unused_ = body->next_;
    body->clearContents();
    delete body;
  }
  endingUnused_ = false;
}

VirtualMemorySet::VirtualMemorySet() {
  auto localSpace = std::make_unique<VirtualMemoryObject>("Local Memory", this);
  global = new VirtualMemoryObject("Global Memory", this);
  current = local = localSpace.release();
  ++local->refCount;
  ++global->refCount;
}

VirtualMemorySet::~VirtualMemorySet() {
  giveUp(local);
  giveUp(global);
  for (PostscriptObject* object : kept_) {
    delete object;
  }
}

void VirtualMemorySet::keepCount(PostscriptObject& object) {
  if (!object.countIsKept) {
    kept_.push_back(&object);
    object.countIsKept = true;
  }
  // All other counts are bounded by the budget, as each belongs to a place of a stack or
  // dictionary. These are not; so high, one more or less shows nowhere.
  constexpr int32_t high = 1 << 30;
  if (object.refCount < high) {
    ++object.refCount;
  }
}

}  // namespace postscript
