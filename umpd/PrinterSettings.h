// PrinterSettings: which printer a job prints to, and what the user has set for it.
//
// The block belongs to a job and lives as long. It is also the job's way to the platform: whoever
// has settings has a platform.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "umpd/StringMap.h"
#include "umpd/platform/Platform.h"

namespace umpd {

class PrinterSettings {
 public:
  // Takes the name of the user's default printer, or `defaultPrinterName` if none is stored.
  explicit PrinterSettings(Platform& thePlatform);

  // A name that begins with `,` or `\` is in port form and is looked for among the printers' ports.
  // An empty name takes the default printer's and empties the map.
  void setPrinterName(std::u16string_view name);
  void loadDefaultPrinterName();
  // The printer's own key; none on failure. The first open of a printer's key makes the key and
  // writes the defaults into it.
  OwnedKey openPrinterKey(uint32_t access);
  // Copies the printer key's values to the map. False if the key cannot be read.
  bool loadSettings();
  // Fills a printer key that was just made.
  void writeDefaultSettings();

  // The pairs of a section of "tqpconf.ini" (of the printer's own if none is named) into the map
  // and, if `writing`, into the registry. True if the section had entries.
  bool mergeConfigSection(bool writing, const std::optional<std::u16string>& section);
  // What the installer forces on all users at each job, if its file says so.
  void applyOverrideUserSettings();

  // The number that the value's text begins with, 0 if it begins with none.
  uint32_t getSettingInt(std::u16string_view key, uint32_t defaultValue) const;
  // Copies the value, terminated, if it is not empty and fits into `size` characters. Otherwise
  // the default is copied, whatever its length: whoever passes one has room for it. A null default
  // leaves the buffer as it is.
  void getSettingString(std::u16string_view key, char16_t* buffer, size_t size,
                        const char16_t* defaultText) const;

  // Into the printer key and, once stored, into the map.
  bool setRegistryString(const std::u16string& key, const std::u16string& text);
  bool setRegistryDword(const std::u16string& key, uint32_t value);
  // Into the printer key alone: digits only, or nothing, as a number, all else as text.
  bool setRegistryValue(const std::u16string& key, const std::u16string& value);

  // Hands some of the settings over to the driver of NT 4, in the file "tqpcfg.1" of the system
  // directory: UTF-16 without a mark, `key=value&` for each, nothing escaped.
  bool copyNameValuesToPrinterDriverConfigFile();

  // The name that the settings are kept under: registry key, profile section, launcher messages.
  std::u16string effectiveName() const;

  Platform& platform;
  std::u16string printerName;  // empty if no printer has the port asked for
  OwnedPrinter printer;        // opened by this block, never the caller's
  StringMap params;
  std::u16string portFormName;  // empty if the job was started by a plain name

 private:
  void storeAsDefaultPrinter();
};

}  // namespace umpd
