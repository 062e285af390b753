// ConfigStore: the settings of each printer, in the registry hive of the user who prints and in the
// installation's file "tqpconf.ini" beside the driver.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "umpd/PrinterSettings.h"
#include "umpd/platform/Platform.h"

inline constexpr std::uint32_t keyRead = 1;
inline constexpr std::uint32_t keyWrite = 2;

// The printer's own key; none on failure. The first open of a printer makes its key and writes the
// defaults into it.
OwnedKey openPrinterKey(PrinterSettings& settings, std::uint32_t access);

// The pairs of a section of "tqpconf.ini" (of the printer's own if none is named) into the map and,
// if `writing`, into the registry. True if the section had entries.
bool mergeConfigSection(PrinterSettings& settings, bool writing,
                        const std::optional<std::u16string>& section);

// What the installer forces on all users at each job, if its file says so.
void applyOverrideUserSettings(PrinterSettings& settings);

// Into the printer key: digits alone, or nothing, as a number, all else as text.
bool setRegistryValue(PrinterSettings& settings, const std::u16string& key,
                      const std::u16string& value);

// The usable `key=value` texts of a section as the platform gives it: a text that the buffer cut,
// or without `=`, or without a value, is passed over.
std::vector<StringMap::Pair> pairsOfSection(std::u16string_view section);
