// ConfigStore: where the settings of each printer are kept: a key in the registry hive of the user
// who prints, and the installation's file "tqpconf.ini" in the driver directory. It knows names
// and places only; PrinterSettings decides what goes there.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "umpd/StringMap.h"
#include "umpd/platform/Platform.h"

namespace umpd {

// The key above all printers' keys, made if it is missing; none on failure.
OwnedKey openProductKey(Platform& platform, uint32_t access);

// The key of the printer with this effective name, made if it is missing. If `created`, it is empty
// and the caller installs the defaults.
CreatedKey openPrinterKey(Platform& platform, std::u16string_view name, uint32_t access);

// Digits alone, or nothing, as a number, all else as text.
bool writeRegistryValue(Registry& registry, KeyHandle key, const std::u16string& name,
                        const std::u16string& value);

// The usable pairs of a section of the file, whose name may hold backslashes. No value if there is
// no such section, or none of that name is possible.
std::optional<std::vector<StringMap::Pair>> readConfigSection(Platform& platform,
                                                              std::u16string_view section);

// True if the installer wants the file's values to replace the user's at each job.
bool overridesUserSettings(Platform& platform);

// The usable `key=value` texts of a section as the platform returns it: a text that the buffer cut,
// or without `=`, or without a value, is skipped.
std::vector<StringMap::Pair> pairsOfSection(std::u16string_view section);

}  // namespace umpd
