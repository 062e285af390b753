// Waiting and releasing both go without a handle by trying the name again, as another process may
// have made the mutex since. Whether the wait ended by a signal or because the holder died makes no
// difference.
#include "umpd/NamedMutex.h"

#include <optional>
#include <utility>

#include "umpd/SecurityAttributesHolder.h"

namespace umpd {

NamedMutex::NamedMutex(Platform& platform, std::u16string name)
    : platform_(platform), name_(std::move(name)) {
  SecurityAttributesHolder security;
  handle_ = platform_.objects.createMutex(buildSecurityAttributes(platform_, security), name_);
  if (handle_) {
    return;
  }
  // Read before the debugger's calls, which may change the last error.
  const std::optional<std::u16string> reason =
      platform_.messages.errorText(platform_.messages.lastError());
  platform_.messages.narrowDebug("CreateMutex failed ");
  if (reason) {
    platform_.messages.debug(*reason);
  }
}

void NamedMutex::wait() {
  if (open()) {
    platform_.objects.wait(handle_.get(), noTimeLimit);
  }
}

void NamedMutex::release() {
  if (open()) {
    platform_.objects.releaseMutex(handle_.get());
  }
}

bool NamedMutex::open() {
  if (!handle_) {
    handle_ = platform_.objects.openMutex(name_);
  }
  return static_cast<bool>(handle_);
}

}  // namespace umpd
