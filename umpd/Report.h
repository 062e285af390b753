// Report: the front end's words to its user and its developers. It raises nothing: a failure is a
// value, and at most a box.
#pragma once

#include <cstdint>
#include <string>

#include "umpd/platform/Platform.h"

namespace umpd {

// A box with this caption and the system's text for the last error.
void reportLastError(Platform& platform, const std::u16string& caption, uint32_t flags);

// A box with the caption "Error"; a format of printf.
__attribute__((format(printf, 2, 3))) void showErrorBox(Platform& platform, const char* format,
                                                        ...);

}  // namespace umpd
