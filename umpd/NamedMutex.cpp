#include "umpd/NamedMutex.h"

#include <optional>
#include <utility>

#include "umpd/SecurityAttributesHolder.h"

NamedMutex::NamedMutex(Platform& machine, std::u16string mutexName)
    : platform(machine), name(std::move(mutexName)) {
  SecurityAttributesHolder security;
  handle = platform.objects.createMutex(buildSecurityAttributes(platform, security), name);
  if (handle) return;
  const std::optional<std::u16string> reason =
      platform.messages.errorText(platform.messages.lastError());
  platform.messages.narrowDebug("CreateMutex failed ");
  if (reason) platform.messages.debug(*reason);
}

void NamedMutex::wait() {
  if (open()) platform.objects.wait(handle.get(), noTimeLimit);
}

void NamedMutex::release() {
  if (open()) platform.objects.releaseMutex(handle.get());
}

bool NamedMutex::open() {
  if (!handle) handle = platform.objects.openMutex(name);
  return static_cast<bool>(handle);
}
