// Objects are made and opened by name with everything allowed that their use takes. A name that
// exists as an object of another kind is a failure of the system's own.
#include <cstddef>
#include <cstdint>

#include "umpd/platform/win32/Win32Types.h"
// The headers below build on <windows.h>.
#include "umpd/platform/win32/Win32Platform.h"

namespace umpd {
namespace {

using ConvertStringSecurityDescriptorCall = BOOL(WINAPI*)(LPCSTR, DWORD, PSECURITY_DESCRIPTOR*,
                                                          PULONG);

constexpr DWORD descriptorRevision = 1;
constexpr DWORD textRevision = 1;
// Mutexes and events are opened with one mask.
constexpr DWORD objectAccess = 0x1F0003;
// All rights to a mapping; of its view, to read and to write.
constexpr DWORD mappingAccess = 0xF001F;
constexpr DWORD viewAccess = 6;

// The attributes as the calls take them. The length is the caller's and need not be the record's.
class CallAttributes {
 public:
  explicit CallAttributes(const SecurityAttributes* attributes) {
    if (!attributes) {
      return;
    }
    record_ = {attributes->length, as<void*>(attributes->descriptor), attributes->inherit};
    given_ = &record_;
  }
  CallAttributes(const CallAttributes&) = delete;
  CallAttributes& operator=(const CallAttributes&) = delete;
  SECURITY_ATTRIBUTES* get() { return given_; }

 private:
  SECURITY_ATTRIBUTES record_{};
  SECURITY_ATTRIBUTES* given_ = nullptr;
};

PSECURITY_DESCRIPTOR descriptorOf(DescriptorHandle descriptor) {
  return as<PSECURITY_DESCRIPTOR>(descriptor);
}

// These calls have null for "none", where files have -1.
OwnedObject owned(NamedObjects& objects, HANDLE handle) {
  return handle ? OwnedObject(objects, from<ObjectHandle>(handle)) : OwnedObject();
}

}  // namespace

// The memory is of the kind that converted descriptors come in: one call frees both.
OwnedDescriptor Win32Security::allocateDescriptor(size_t size) {
  return OwnedDescriptor(*this, from<DescriptorHandle>(LocalAlloc(LPTR, size)));
}

bool Win32Security::initialize(DescriptorHandle descriptor) {
  return InitializeSecurityDescriptor(descriptorOf(descriptor), descriptorRevision) != FALSE;
}

bool Win32Security::setNullDacl(DescriptorHandle descriptor) {
  return SetSecurityDescriptorDacl(descriptorOf(descriptor), TRUE, nullptr, FALSE) != FALSE;
}

OwnedDescriptor Win32Security::convertText(FunctionAddress call, const std::string& text) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (!as<ConvertStringSecurityDescriptorCall>(call)(text.c_str(), textRevision, &descriptor,
                                                     nullptr)) {
    return {};
  }
  return OwnedDescriptor(*this, from<DescriptorHandle>(descriptor));
}

// The call itself would read at the null address.
std::optional<AclHandle> Win32Security::sacl(DescriptorHandle descriptor) {
  if (descriptor == DescriptorHandle{}) {
    SetLastError(ERROR_INVALID_SECURITY_DESCR);
    return std::nullopt;
  }
  BOOL present = FALSE;
  BOOL defaulted = FALSE;
  PACL list = nullptr;
  if (!GetSecurityDescriptorSacl(descriptorOf(descriptor), &present, &list, &defaulted)) {
    return std::nullopt;
  }
  return from<AclHandle>(list);
}

bool Win32Security::setSacl(DescriptorHandle descriptor, AclHandle sacl) {
  return SetSecurityDescriptorSacl(descriptorOf(descriptor), TRUE, as<PACL>(sacl), FALSE) != FALSE;
}

void Win32Security::close(DescriptorHandle descriptor) {
  const KeptLastError kept;
  LocalFree(descriptorOf(descriptor));
}

// Not owned at first: its maker waits for it like everybody else.
OwnedObject Win32Objects::createMutex(const SecurityAttributes* security,
                                      const std::u16string& name) {
  return owned(*this, CreateMutexW(CallAttributes(security).get(), FALSE, wide(name)));
}

OwnedObject Win32Objects::openMutex(const std::u16string& name) {
  return owned(*this, OpenMutexW(objectAccess, FALSE, wide(name)));
}

bool Win32Objects::releaseMutex(ObjectHandle mutex) {
  return ReleaseMutex(as<HANDLE>(mutex)) != FALSE;
}

OwnedObject Win32Objects::createEvent(const SecurityAttributes* security,
                                      const std::u16string& name) {
  return owned(*this, CreateEventW(CallAttributes(security).get(), FALSE, FALSE, wide(name)));
}

OwnedObject Win32Objects::openEvent(const std::u16string& name) {
  return owned(*this, OpenEventW(objectAccess, FALSE, wide(name)));
}

bool Win32Objects::setEvent(ObjectHandle event) {
  return SetEvent(as<HANDLE>(event)) != FALSE;
}

WaitAnswer Win32Objects::wait(ObjectHandle object, uint32_t milliseconds) {
  return WaitAnswer{static_cast<uint32_t>(WaitForSingleObject(as<HANDLE>(object), milliseconds))};
}

// The handle of no file stands for the paging file.
OwnedObject Win32Objects::createMapping(const SecurityAttributes* security,
                                        const std::u16string& name, uint32_t size) {
  return owned(*this, CreateFileMappingW(INVALID_HANDLE_VALUE, CallAttributes(security).get(),
                                         PAGE_READWRITE, 0, size, wide(name)));
}

OwnedObject Win32Objects::openMapping(const std::u16string& name) {
  return owned(*this, OpenFileMappingW(mappingAccess, FALSE, wide(name)));
}

OwnedView Win32Objects::mapView(ObjectHandle mapping, size_t size) {
  OwnedView view(*this,
                 static_cast<std::byte*>(MapViewOfFile(as<HANDLE>(mapping), viewAccess, 0, 0, 0)));
  if (!view) {
    return {};
  }
  // The view's first region are its pages of one state, in whole pages.
  MEMORY_BASIC_INFORMATION region{};
  const bool known = VirtualQuery(view.get(), &region, sizeof region) != 0;
  if (!known || region.State != MEM_COMMIT || region.RegionSize < size) {
    view.reset();
    SetLastError(ERROR_INVALID_PARAMETER);
  }
  return view;
}

void Win32Objects::close(ObjectHandle object) {
  const KeptLastError kept;
  CloseHandle(as<HANDLE>(object));
}

void Win32Objects::close(std::byte* view) {
  const KeptLastError kept;
  UnmapViewOfFile(view);
}

}  // namespace umpd
