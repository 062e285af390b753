// RunProcess: starting other programs of the product.
#pragma once

#include <cstdint>
#include <string>

#include "umpd/PrinterSettings.h"
#include "umpd/platform/Platform.h"

namespace umpd {

// Asks for a hidden window, whose own number, 0, asks for no state at all.
inline constexpr uint16_t showStateHidden = 11;

// True if the process was started. wait: until it ends; then its exit code goes to `exitCode`,
// which may be null.
bool runProcess(Platform& platform, const std::u16string& commandLine,
                const std::u16string& directory, bool wait, uint32_t* exitCode, uint16_t showState);

// Brings the user's installation up to date, and waits for it, if the launcher that starts with the
// session is still that of the driver's version 2.
void runSetupProgram(PrinterSettings& settings);

}  // namespace umpd
