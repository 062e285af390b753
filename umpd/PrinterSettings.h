// PrinterSettings: which printer a job prints to, and what the user has set for it.
//
// The block belongs to a job and lives as long. It is also the job's way to the platform: whoever
// has settings has a platform.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "umpd/StringMap.h"
#include "umpd/platform/Platform.h"

inline constexpr std::u16string_view defaultPrinterName = u"Tarnwick Quillpress";
inline constexpr std::u16string_view productKey = u"Software\\Quillpress\\";

class PrinterSettings {
 public:
  // Takes the name of the user's default printer.
  explicit PrinterSettings(Platform& machine);

  // A name that begins with `,` or `\` is in port form and is looked for among the printers' ports.
  // An empty name takes the default printer's and empties the map.
  void setPrinterName(std::u16string_view name);
  void loadDefaultPrinterName();
  // Copies the printer key's values to the map. False if the key cannot be read.
  bool loadSettings();
  // Fills a printer key that was just made.
  void writeDefaultSettings();

  std::uint32_t getSettingInt(std::u16string_view key, std::uint32_t defaultValue) const;

  // Into the printer key and, once stored, into the map.
  bool setRegistryString(const std::u16string& key, const std::u16string& text);
  bool setRegistryDword(const std::u16string& key, std::uint32_t value);

  bool copyNameValuesToPrinterDriverConfigFile();

  // The name that the settings are kept under: registry key, profile section, launcher messages.
  std::u16string effectiveName() const;

  Platform& platform;
  std::u16string printerName;
  OwnedPrinter printer;  // opened by this block, never the caller's
  StringMap params;
  std::u16string portFormName;
};
