// A printer's key in the registry is the truth and the map is a job's copy of it: values are
// written to the key first, and to the map only once they are stored. Each write opens the key by
// itself, so that one that fails does not stop the next.
#include "umpd/PrinterSettings.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <utility>

#include "umpd/ConfigStore.h"
#include "umpd/Folders.h"
#include "umpd/PrinterList.h"
#include "umpd/ProductNames.h"
#include "umpd/platform/WideText.h"

namespace umpd {
namespace {

constexpr const char16_t* printerNameValue = u"printerName";
constexpr size_t printerNameRoom = 260 * sizeof(char16_t);
constexpr uint32_t leastDataRoom = 10;
// The section of "tqpconf.ini" for all printers.
constexpr const char16_t* commonSection = u"init";

// The name of a port: "\\server\laser", or the same with commas.
bool isPortForm(std::u16string_view name) {
  return name.starts_with(u',') || name.starts_with(u'\\');
}

// The settings that the driver of NT 4 reads, spelled as it looks for them.
bool goesToDriverFile(const StringMap::Pair& pair) {
  constexpr std::array<std::u16string_view, 9> keys = {
      u"resolution",       u"PrinterData4",      u"pdfTemplate", u"pdfTemplateOnTop", u"imageDPI",
      u"jpegImageQuality", u"watermarkFontName", u"watermark",   u"watermarkFontSize"};
  return !pair.value.empty() && std::ranges::find(keys, pair.key) != keys.end();
}

// What the launcher runs to show a document; it fills in the two texts itself.
std::optional<std::u16string> viewerCommandLine(Platform& platform) {
  constexpr std::u16string_view arguments = u" -nav=\"%s\" -docname=\"%s\"";
  std::optional<std::u16string> viewer = driverFile(platform, viewerFileName);
  if (!viewer || viewer->size() + arguments.size() >= pathCapacity) {
    return std::nullopt;
  }
  return *viewer + std::u16string(arguments);
}

// Where the user's programs save documents; the product's own folder if there is none.
std::u16string documentsFolder(Platform& platform) {
  std::u16string folder =
      platform.files.specialFolder(SpecialFolder::documents).value_or(std::u16string());
  return folder.empty() ? productDataFolder(platform) : folder;
}

}  // namespace

PrinterSettings::PrinterSettings(Platform& thePlatform)
    : platform(thePlatform), params(thePlatform.messages) {
  loadDefaultPrinterName();
}

// A name in port form is kept beside the printer's: settings go by it, also when no printer has
// that port.
void PrinterSettings::setPrinterName(std::u16string_view name) {
  if (name.empty()) {
    portFormName.clear();
    loadDefaultPrinterName();
  } else if (!isPortForm(name)) {
    printerName = name;
    portFormName.clear();
  } else {
    portFormName = name;
    printerName.clear();
    FindPort findPort(portFormName, printerName);
    enumeratePrinters(platform, findPort);
  }
}

// The name is stored above the printers' keys by the last printer whose key was made.
void PrinterSettings::loadDefaultPrinterName() {
  // What is there belongs to another printer.
  params.clear();
  printerName = defaultPrinterName;
  const OwnedKey key = openProductKey(platform, keyRead);
  if (!key) {
    return;
  }
  const RegistryValue value =
      platform.registry.readValue(key.get(), printerNameValue, printerNameRoom);
  if (value.ok() && !value.text().empty()) {
    printerName = value.text();
  }
}

OwnedKey PrinterSettings::openPrinterKey(uint32_t access) {
  const std::u16string name = effectiveName();
  CreatedKey opened = umpd::openPrinterKey(platform, name, access);
  // Writing the defaults opens the key again, which exists by then.
  if (opened.key && opened.created && !name.empty()) {
    writeDefaultSettings();
  }
  return std::move(opened.key);
}

// Rooms come from the key itself. Values of other types than number and text are skipped, and so is
// the key's default value, which has no name.
bool PrinterSettings::loadSettings() {
  const OwnedKey key = openPrinterKey(keyRead);
  if (!key) {
    return false;
  }
  const std::optional<KeyInfo> info = platform.registry.queryInfo(key.get());
  if (!info) {
    return false;
  }
  params.clear();
  for (uint32_t i = 0; i < info->valueCount; ++i) {
    const RegistryValue value = platform.registry.enumerateValue(
        key.get(), i, info->longestName + 1, std::max(info->longestData, leastDataRoom));
    if (!value.ok() || value.name.empty()) {
      continue;
    }
    if (value.type == registryDword) {
      params.set(value.name, decimalText(value.dword()));
    }
    if (value.type == registryText) {
      params.set(value.name, value.text());
    }
  }
  return true;
}

// The values that a new printer begins with; those of the installation's file replace them.
void PrinterSettings::writeDefaultSettings() {
  storeAsDefaultPrinter();
  setRegistryDword(u"NextAction", 3);
  setRegistryDword(u"SaveFilenameAction", 3);
  // Asking for the folder makes it.
  setRegistryString(u"DefaultSaveDir", productDataFolder(platform));
  setRegistryString(u"LastDir", documentsFolder(platform));
  if (const auto command = viewerCommandLine(platform)) {
    setRegistryString(u"ExecCmdLine", *command);
  }
  setRegistryString(u"DefaultSaveFilename", u"tmp.pdf");
  setRegistryDword(u"resIndex", 3);
  setRegistryDword(u"jpegImageQuality", 75);
  setRegistryDword(u"imageDPI", 300);
  setRegistryDword(u"TrimNameChar", u'-');
  setRegistryDword(u"showDrellisButton", 0);
  mergeConfigSection(true, commonSection);
  mergeConfigSection(true, effectiveName());
}

void PrinterSettings::storeAsDefaultPrinter() {
  const OwnedKey key = openProductKey(platform, keyRead | keyWrite);
  if (key && platform.registry.writeText(key.get(), printerNameValue, effectiveName())) {
    params.set(printerNameValue, effectiveName());
  }
}

// A text that begins with no number counts as 0: only a setting that is absent has the default.
uint32_t PrinterSettings::getSettingInt(std::u16string_view key, uint32_t defaultValue) const {
  const std::optional<std::u16string> value = params.find(key);
  return value ? decimalValue(*value) : defaultValue;
}

void PrinterSettings::getSettingString(std::u16string_view key, char16_t* buffer, size_t size,
                                       const char16_t* defaultText) const {
  std::u16string_view text;
  const std::optional<std::u16string> value = params.find(key);
  if (value && !value->empty() && value->size() < size) {
    text = *value;
  } else if (defaultText) {
    text = defaultText;
  } else {
    return;
  }
  *std::ranges::copy(text, buffer).out = 0;
}

bool PrinterSettings::setRegistryString(const std::u16string& key, const std::u16string& text) {
  const OwnedKey printerKey = openPrinterKey(keyWrite);
  if (!printerKey || !platform.registry.writeText(printerKey.get(), key, text)) {
    return false;
  }
  params.set(key, text);
  return true;
}

bool PrinterSettings::setRegistryDword(const std::u16string& key, uint32_t value) {
  const OwnedKey printerKey = openPrinterKey(keyWrite);
  if (!printerKey || !platform.registry.writeDword(printerKey.get(), key, value)) {
    return false;
  }
  params.set(key, decimalText(value));
  return true;
}

bool PrinterSettings::setRegistryValue(const std::u16string& key, const std::u16string& value) {
  const OwnedKey printerKey = openPrinterKey(keyWrite);
  return writeRegistryValue(platform.registry, printerKey.get(), key, value);
}

bool PrinterSettings::mergeConfigSection(bool writing,
                                         const std::optional<std::u16string>& section) {
  const auto pairs = readConfigSection(platform, section ? *section : effectiveName());
  if (!pairs) {
    return false;
  }
  for (const auto& [key, value] : *pairs) {
    params.set(key, value);
    if (writing) {
      setRegistryValue(key, value);
    }
  }
  return true;
}

void PrinterSettings::applyOverrideUserSettings() {
  if (!overridesUserSettings(platform)) {
    return;
  }
  mergeConfigSection(true, commonSection);
  // Last, so that the printer's own section wins.
  mergeConfigSection(true, std::nullopt);
}

// In the order of the map. A file without any pair is written too: it replaces an old one.
bool PrinterSettings::copyNameValuesToPrinterDriverConfigFile() {
  std::u16string text;
  for (const StringMap::Pair& pair : params.pairs()) {
    if (goesToDriverFile(pair)) {
      text += pair.key + u"=" + pair.value + u"&";
    }
  }
  const std::optional<std::u16string> folder = platform.files.systemDirectory();
  if (!folder) {
    return false;
  }
  const std::u16string path = *folder + u'\\' + std::u16string(driverConfigFileName);
  const FileHandle opened = platform.files.openForWriting(path, Disposition::createAlways);
  if (opened == invalidFile) {
    return false;
  }
  const OwnedFile file(platform.files, opened);
  uint32_t written = 0;
  return platform.files.write(file.get(), std::as_bytes(std::span(text)), written);
}

std::u16string PrinterSettings::effectiveName() const {
  return portFormName.empty() ? printerName : portFormName;
}

}  // namespace umpd
