// ProductNames: the names under which the product is known to the system: printer, registry key,
// folder, and the files that are installed beside the driver.
#pragma once

#include <string_view>

namespace umpd {

inline constexpr std::u16string_view productName = u"Quillpress";

// The printer's driver, and the printer that a job without a name prints to.
inline constexpr std::u16string_view defaultPrinterName = u"Tarnwick Quillpress";

// Above the keys of the printers, in the hive of the user and in that of the machine.
inline constexpr std::u16string_view productKey = u"Software\\Quillpress\\";

// In the driver directory.
inline constexpr std::u16string_view configFileName = u"tqpconf.ini";
inline constexpr std::u16string_view launcherFileName = u"tqpmsnd.exe";
inline constexpr std::u16string_view setupFileName = u"tqpsetup.exe";
inline constexpr std::u16string_view viewerFileName = u"tqpview.exe";

// In the system directory, for the driver of NT 4.
inline constexpr std::u16string_view driverConfigFileName = u"tqpcfg.1";

}  // namespace umpd
