// UserHive: the registry hive of the user who prints. The code may run under a service's account,
// so the current user's hive need not be the right one, and systems before Windows 2000 have no
// call that finds it: there the way leads over the user's SID.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "umpd/platform/Platform.h"

namespace umpd {

// None on failure. May be the predefined key of the current user.
OwnedKey getHKCU(Platform& platform, uint32_t access);

std::optional<std::u16string> currentUserSidText(Platform& platform);

// `capacity` in characters. If too small, it is set to the needed size.
std::optional<std::u16string> sidToText(Platform& platform, const Sid& sid, size_t& capacity);

// Found out once a session and shared between its processes; empty without a domain.
std::u16string getDomainControllerName(Platform& platform);

}  // namespace umpd
