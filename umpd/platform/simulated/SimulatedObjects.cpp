// Handles point to shared objects, and names to them weakly: the last handle, or the last word of a
// test that another process holds one, ends an object and frees its name.
#include "umpd/platform/simulated/SimulatedObjects.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace umpd {
namespace {

using Kind = SimulatedObject::Kind;

constexpr uint32_t errorFileNotFound = 2;
constexpr uint32_t errorInvalidHandle = 6;
constexpr uint32_t errorInvalidParameter = 87;
constexpr uint32_t errorNotOwner = 288;
constexpr uint32_t errorInvalidSecurityDescriptor = 1338;
constexpr std::u16string_view sessionPrefix = u"Local\\";

}  // namespace

OwnedDescriptor SimulatedSecurity::allocateDescriptor(size_t size) {
  if (!journal_.may("allocateDescriptor")) {
    return {};
  }
  const DescriptorHandle handle{journal_.newHandle()};
  descriptors_[handle].size = size;
  return OwnedDescriptor(*this, handle);
}

const SimulatedDescriptor* SimulatedSecurity::find(DescriptorHandle descriptor) const {
  const auto found = descriptors_.find(descriptor);
  return found == descriptors_.end() ? nullptr : &found->second;
}

// The system refuses a descriptor that was not initialised.
SimulatedDescriptor* SimulatedSecurity::valid(DescriptorHandle descriptor) {
  const auto found = descriptors_.find(descriptor);
  if (found != descriptors_.end() && found->second.initialized) {
    return &found->second;
  }
  journal_.fails(errorInvalidSecurityDescriptor);
  return nullptr;
}

bool SimulatedSecurity::initialize(DescriptorHandle descriptor) {
  if (!journal_.may("initializeDescriptor")) {
    return false;
  }
  const auto found = descriptors_.find(descriptor);
  if (found == descriptors_.end()) {
    return journal_.fails(errorInvalidSecurityDescriptor);
  }
  return found->second.initialized = true;
}

bool SimulatedSecurity::setNullDacl(DescriptorHandle descriptor) {
  if (!journal_.may("setNullDacl")) {
    return false;
  }
  SimulatedDescriptor* found = valid(descriptor);
  return found && (found->nullDacl = true);
}

OwnedDescriptor SimulatedSecurity::convertText(FunctionAddress /*call*/, const std::string& text) {
  if (!journal_.may("convertText", std::u16string(text.begin(), text.end()))) {
    return {};
  }
  const DescriptorHandle handle{journal_.newHandle()};
  descriptors_[handle].initialized = true;
  descriptors_[handle].label = text;
  return OwnedDescriptor(*this, handle);
}

std::optional<AclHandle> SimulatedSecurity::sacl(DescriptorHandle descriptor) {
  if (!journal_.may("sacl")) {
    return std::nullopt;
  }
  const SimulatedDescriptor* found = valid(descriptor);
  if (!found) {
    return std::nullopt;
  }
  // A list goes by the descriptor that it lies in.
  const DescriptorHandle owner = found->label.empty() ? found->saclOwner : descriptor;
  return AclHandle{static_cast<uintptr_t>(owner)};
}

bool SimulatedSecurity::setSacl(DescriptorHandle descriptor, AclHandle sacl) {
  if (!journal_.may("setSacl")) {
    return false;
  }
  SimulatedDescriptor* found = valid(descriptor);
  if (!found) {
    return false;
  }
  found->saclOwner = DescriptorHandle{static_cast<uintptr_t>(sacl)};
  return true;
}

void SimulatedSecurity::close(DescriptorHandle descriptor) {
  journal_.noteReturn("freeDescriptor");
  descriptors_.erase(descriptor);
}

// Names without a prefix are the session's as well.
std::u16string SimulatedObjects::inSession(const std::u16string& name) {
  return name.starts_with(sessionPrefix) ? name.substr(sessionPrefix.size()) : name;
}

// A name of an object that has gone is no name.
std::shared_ptr<SimulatedObject> SimulatedObjects::named(const std::u16string& name) {
  const auto found = names_.find(inSession(name));
  return found == names_.end() ? nullptr : found->second.lock();
}

SimulatedObject* SimulatedObjects::find(const std::u16string& name) {
  return named(name).get();
}

SimulatedObject& SimulatedObjects::holdElsewhere(Kind kind, const std::u16string& name,
                                                 size_t size) {
  auto object = named(name);
  if (!object) {
    object = std::make_shared<SimulatedObject>(kind);
    object->bytes.resize(size);
    names_[inSession(name)] = object;
  }
  elsewhere_[inSession(name)] = object;
  return *object;
}

OwnedObject SimulatedObjects::adopt(std::shared_ptr<SimulatedObject> object) {
  const ObjectHandle handle{journal_.newHandle()};
  handles_[handle] = std::move(object);
  return OwnedObject(*this, handle);
}

// An existing object keeps the security that it was made with.
OwnedObject SimulatedObjects::create(const char* operation, Kind kind,
                                     const SecurityAttributes* security, const std::u16string& name,
                                     size_t size) {
  if (!journal_.may(operation, name)) {
    return {};
  }
  auto object = named(name);
  if (object && object->kind != kind) {
    journal_.fails(errorInvalidHandle);
    return {};
  }
  if (!object) {
    object = std::make_shared<SimulatedObject>(kind);
    object->bytes.resize(size);
    if (security) {
      object->securityLength = security->length;
      if (const auto* descriptor = descriptors_.find(security->descriptor)) {
        object->openToAll = descriptor->nullDacl;
        if (const auto* owner = descriptors_.find(descriptor->saclOwner)) {
          object->label = owner->label;
        }
      }
    }
    names_[inSession(name)] = object;
  }
  return adopt(std::move(object));
}

// A name of another kind of object is not the same as no such name.
OwnedObject SimulatedObjects::open(const char* operation, Kind kind, const std::u16string& name) {
  if (!journal_.may(operation, name)) {
    return {};
  }
  auto object = named(name);
  if (object && object->kind == kind) {
    return adopt(std::move(object));
  }
  journal_.fails(object ? errorInvalidHandle : errorFileNotFound);
  return {};
}

// Null, and the error, for a handle that is none or of another kind.
SimulatedObject* SimulatedObjects::opened(ObjectHandle handle, Kind kind) {
  const auto found = handles_.find(handle);
  if (found != handles_.end() && found->second->kind == kind) {
    return found->second.get();
  }
  journal_.fails(errorInvalidHandle);
  return nullptr;
}

OwnedObject SimulatedObjects::createMutex(const SecurityAttributes* security,
                                          const std::u16string& name) {
  return create("createMutex", Kind::mutex, security, name, 0);
}

OwnedObject SimulatedObjects::openMutex(const std::u16string& name) {
  return open("openMutex", Kind::mutex, name);
}

// Only as often as this process has waited for it.
bool SimulatedObjects::releaseMutex(ObjectHandle mutex) {
  if (!journal_.mayReturn("releaseMutex")) {
    return false;
  }
  SimulatedObject* found = opened(mutex, Kind::mutex);
  if (!found) {
    return false;
  }
  if (found->depth == 0) {
    return journal_.fails(errorNotOwner);
  }
  --found->depth;
  return true;
}

OwnedObject SimulatedObjects::createEvent(const SecurityAttributes* security,
                                          const std::u16string& name) {
  return create("createEvent", Kind::event, security, name, 0);
}

OwnedObject SimulatedObjects::openEvent(const std::u16string& name) {
  return open("openEvent", Kind::event, name);
}

bool SimulatedObjects::setEvent(ObjectHandle event) {
  if (!journal_.may("setEvent")) {
    return false;
  }
  SimulatedObject* found = opened(event, Kind::event);
  return found && (found->signalled = true);
}

// True if the object lets the waiter pass now.
bool SimulatedObjects::take(SimulatedObject& object, WaitAnswer& answer) {
  answer = WaitAnswer::signalled;
  if (object.kind != Kind::mutex) {
    const bool passes = object.signalled;
    if (object.kind == Kind::event) {
      object.signalled = false;
    }
    return passes;
  }
  if (object.abandoned) {
    answer = WaitAnswer::abandoned;
  }
  if (object.heldElsewhere && !object.abandoned) {
    return false;
  }
  object.heldElsewhere = false;
  object.abandoned = false;
  ++object.depth;
  return true;
}

// A hook that runs as the wait is entered can be the other process that ends it.
WaitAnswer SimulatedObjects::wait(ObjectHandle object, uint32_t milliseconds) {
  if (!journal_.may("wait")) {
    return WaitAnswer::failed;
  }
  const auto found = handles_.find(object);
  if (found == handles_.end() || found->second->kind == Kind::mapping) {
    journal_.fails(errorInvalidHandle);
    return WaitAnswer::failed;
  }
  WaitAnswer answer{};
  if (take(*found->second, answer)) {
    return answer;
  }
  if (milliseconds == noTimeLimit) {
    ++hangs;
    return WaitAnswer::failed;
  }
  clock_.ticks += milliseconds;
  return WaitAnswer::timedOut;
}

OwnedObject SimulatedObjects::createMapping(const SecurityAttributes* security,
                                            const std::u16string& name, uint32_t size) {
  return create("createMapping", Kind::mapping, security, name, size);
}

OwnedObject SimulatedObjects::openMapping(const std::u16string& name) {
  return open("openMapping", Kind::mapping, name);
}

// A view holds its mapping, also after the handle is closed.
OwnedView SimulatedObjects::mapView(ObjectHandle mapping, size_t size) {
  if (!journal_.may("mapView")) {
    return {};
  }
  if (!opened(mapping, Kind::mapping)) {
    return {};
  }
  auto& object = handles_[mapping];
  if (object->bytes.size() < size || !object->committed) {
    journal_.fails(errorInvalidParameter);
    return {};
  }
  std::byte* const view = object->bytes.data();
  views_.emplace(view, object);
  return OwnedView(*this, view);
}

void SimulatedObjects::close(ObjectHandle object) {
  journal_.noteReturn("closeObject");
  handles_.erase(object);
}

void SimulatedObjects::close(std::byte* view) {
  journal_.noteReturn("unmapView");
  if (const auto found = views_.find(view); found != views_.end()) {
    views_.erase(found);
  }
}

}  // namespace umpd
