// ProtectedMode: where a browser that runs with low integrity may write.
#pragma once

#include <string>

#include "umpd/platform/Platform.h"

namespace umpd {

// The shadow of the user's application data in the browser's cache, ending in a backslash:
// "C:\Data\Microsoft\Windows\Temporary Internet Files\Virtualized\C\Data\" for "C:\Data".
std::u16string virtualizedTempPath(Platform& platform);

}  // namespace umpd
