// SimulatedObjects, SimulatedSecurity: the simulated machine's named objects and their guards.
//
// An object lives as long as somebody holds it: this process by its handles, other processes by
// what a test says of them. Nothing runs beside the test, so a wait that nothing ends comes back:
// with a time limit it times out and moves the clock, with none it fails and counts as a hang.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "umpd/platform/Platform.h"
#include "umpd/platform/simulated/Journal.h"
#include "umpd/platform/simulated/SimulatedSystem.h"

namespace umpd {

struct SimulatedDescriptor {
  size_t size = 0;
  bool initialized = false;
  bool nullDacl = false;
  std::string label;             // of a descriptor made from text
  DescriptorHandle saclOwner{};  // whose list this descriptor points to
};

class SimulatedSecurity : public Security {
 public:
  explicit SimulatedSecurity(Journal& journal) : journal_(journal) {}

  OwnedDescriptor allocateDescriptor(size_t size) override;
  bool initialize(DescriptorHandle descriptor) override;
  bool setNullDacl(DescriptorHandle descriptor) override;
  OwnedDescriptor convertText(FunctionAddress call, const std::string& text) override;
  std::optional<AclHandle> sacl(DescriptorHandle descriptor) override;
  bool setSacl(DescriptorHandle descriptor, AclHandle sacl) override;
  void close(DescriptorHandle descriptor) override;

  size_t openHandles() const { return descriptors_.size(); }
  // Null if there is no such descriptor, or no more.
  const SimulatedDescriptor* find(DescriptorHandle descriptor) const;

 private:
  SimulatedDescriptor* valid(DescriptorHandle descriptor);

  Journal& journal_;
  std::map<DescriptorHandle, SimulatedDescriptor> descriptors_;
};

struct SimulatedObject {
  enum class Kind { mutex, event, mapping, process };

  explicit SimulatedObject(Kind theKind) : kind(theKind) {}

  Kind kind;
  bool signalled = false;        // an event; a process that has ended
  uint32_t depth = 0;            // how often this process holds a mutex
  bool heldElsewhere = false;    // a mutex
  bool abandoned = false;        // a mutex whose holder died
  std::vector<std::byte> bytes;  // of a mapping
  bool committed = true;         // a mapping: there is memory behind it
  uint32_t exitCode = 0;         // of a process
  // What the maker passed, and the label that it led to; no length if there was nothing.
  uint32_t securityLength = 0;
  bool openToAll = false;
  std::string label;
};

class SimulatedObjects : public NamedObjects {
 public:
  SimulatedObjects(Journal& journal, SimulatedSecurity& descriptors, SimulatedClock& clock)
      : journal_(journal), descriptors_(descriptors), clock_(clock) {}

  OwnedObject createMutex(const SecurityAttributes* security, const std::u16string& name) override;
  OwnedObject openMutex(const std::u16string& name) override;
  bool releaseMutex(ObjectHandle mutex) override;
  OwnedObject createEvent(const SecurityAttributes* security, const std::u16string& name) override;
  OwnedObject openEvent(const std::u16string& name) override;
  bool setEvent(ObjectHandle event) override;
  WaitAnswer wait(ObjectHandle object, uint32_t milliseconds) override;
  OwnedObject createMapping(const SecurityAttributes* security, const std::u16string& name,
                            uint32_t size) override;
  OwnedObject openMapping(const std::u16string& name) override;
  OwnedView mapView(ObjectHandle mapping, size_t size) override;
  void close(ObjectHandle object) override;
  void close(std::byte* view) override;

  // The part of other processes: to have an object of their own, and to let go of it.
  SimulatedObject& holdElsewhere(SimulatedObject::Kind kind, const std::u16string& name,
                                 size_t size = 0);
  void dropElsewhere(const std::u16string& name) { elsewhere_.erase(inSession(name)); }
  // Null if nobody holds such an object.
  SimulatedObject* find(const std::u16string& name);
  // A handle to an object without a name.
  OwnedObject adopt(std::shared_ptr<SimulatedObject> object);

  size_t openHandles() const { return handles_.size() + views_.size(); }
  size_t hangs = 0;

 private:
  static std::u16string inSession(const std::u16string& name);
  OwnedObject create(const char* operation, SimulatedObject::Kind kind,
                     const SecurityAttributes* security, const std::u16string& name, size_t size);
  OwnedObject open(const char* operation, SimulatedObject::Kind kind, const std::u16string& name);
  std::shared_ptr<SimulatedObject> named(const std::u16string& name);
  SimulatedObject* opened(ObjectHandle handle, SimulatedObject::Kind kind);
  static bool take(SimulatedObject& object, WaitAnswer& answer);

  Journal& journal_;
  SimulatedSecurity& descriptors_;
  SimulatedClock& clock_;
  std::map<std::u16string, std::weak_ptr<SimulatedObject>> names_;
  std::map<std::u16string, std::shared_ptr<SimulatedObject>> elsewhere_;
  std::map<ObjectHandle, std::shared_ptr<SimulatedObject>> handles_;
  std::multimap<std::byte*, std::shared_ptr<SimulatedObject>> views_;
};

}  // namespace umpd
