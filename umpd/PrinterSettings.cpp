#include "umpd/PrinterSettings.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "umpd/ConfigStore.h"
#include "umpd/Folders.h"
#include "umpd/PrinterInfo.h"
#include "umpd/UserHive.h"
#include "umpd/WideText.h"

namespace {

constexpr const char16_t* printerNameValue = u"printerName";
constexpr std::size_t printerNameRoom = 260 * sizeof(char16_t);
constexpr std::uint32_t leastDataRoom = 10;

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
  std::optional<std::u16string> viewer = driverFile(platform, u"tqpview.exe");
  if (!viewer || viewer->size() + arguments.size() >= pathCapacity) return std::nullopt;
  return *viewer + std::u16string(arguments);
}

// The key above all printers' keys, made if it is missing; none on failure.
OwnedKey openProductKey(Platform& platform, std::uint32_t access) {
  const OwnedKey hive = getHKCU(platform, access);
  return platform.registry.createKey(hive.get(), std::u16string(productKey), access).key;
}

std::u16string documentsFolder(Platform& platform) {
  std::u16string folder =
      platform.files.specialFolder(SpecialFolder::documents).value_or(std::u16string());
  return folder.empty() ? productDataFolder(platform) : folder;
}

}  // namespace

PrinterSettings::PrinterSettings(Platform& machine) : platform(machine), params(machine.messages) {
  loadDefaultPrinterName();
}

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

void PrinterSettings::loadDefaultPrinterName() {
  params.clear();
  printerName = defaultPrinterName;
  const OwnedKey key = openProductKey(platform, keyRead);
  if (!key) return;
  const RegistryValue value =
      platform.registry.readValue(key.get(), printerNameValue, printerNameRoom);
  if (value.ok() && !value.text().empty()) printerName = value.text();
}

bool PrinterSettings::loadSettings() {
  const OwnedKey key = openPrinterKey(*this, keyRead);
  if (!key) return false;
  const std::optional<KeyInfo> info = platform.registry.queryInfo(key.get());
  if (!info) return false;
  params.clear();
  for (std::uint32_t i = 0; i < info->valueCount; ++i) {
    const RegistryValue value = platform.registry.enumerateValue(
        key.get(), i, info->longestName + 1, std::max(info->longestData, leastDataRoom));
    if (!value.ok() || value.name.empty()) continue;
    if (value.type == registryDword) params.set(value.name, decimalText(value.dword()));
    if (value.type == registryText) params.set(value.name, value.text());
  }
  return true;
}

void PrinterSettings::writeDefaultSettings() {
  storeAsDefaultPrinter();
  setRegistryDword(u"NextAction", 3);
  setRegistryDword(u"SaveFilenameAction", 3);
  setRegistryString(u"DefaultSaveDir", productDataFolder(platform));
  setRegistryString(u"LastDir", documentsFolder(platform));
  if (const auto command = viewerCommandLine(platform)) setRegistryString(u"ExecCmdLine", *command);
  setRegistryString(u"DefaultSaveFilename", u"tmp.pdf");
  setRegistryDword(u"resIndex", 3);
  setRegistryDword(u"jpegImageQuality", 75);
  setRegistryDword(u"imageDPI", 300);
  setRegistryDword(u"TrimNameChar", u'-');
  setRegistryDword(u"showDrellisButton", 0);
  mergeConfigSection(*this, true, u"init");
  mergeConfigSection(*this, true, effectiveName());
}

void PrinterSettings::storeAsDefaultPrinter() {
  const OwnedKey key = openProductKey(platform, keyRead | keyWrite);
  if (key && platform.registry.writeText(key.get(), printerNameValue, effectiveName()))
    params.set(printerNameValue, effectiveName());
}

std::uint32_t PrinterSettings::getSettingInt(std::u16string_view key,
                                             std::uint32_t defaultValue) const {
  const std::u16string* value = params.find(key);
  return value ? decimalValue(*value) : defaultValue;
}

void PrinterSettings::getSettingString(std::u16string_view key, char16_t* buffer, std::size_t size,
                                       const char16_t* defaultText) const {
  std::u16string_view text;
  const std::u16string* value = params.find(key);
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
  const OwnedKey printerKey = openPrinterKey(*this, keyWrite);
  if (!printerKey || !platform.registry.writeText(printerKey.get(), key, text)) return false;
  params.set(key, text);
  return true;
}

bool PrinterSettings::setRegistryDword(const std::u16string& key, std::uint32_t value) {
  const OwnedKey printerKey = openPrinterKey(*this, keyWrite);
  if (!printerKey || !platform.registry.writeDword(printerKey.get(), key, value)) return false;
  params.set(key, decimalText(value));
  return true;
}

bool PrinterSettings::copyNameValuesToPrinterDriverConfigFile() {
  std::u16string text;
  for (const StringMap::Pair& pair : params.pairs())
    if (goesToDriverFile(pair)) text += pair.key + u"=" + pair.value + u"&";
  const std::optional<std::u16string> folder = platform.files.systemDirectory();
  if (!folder) return false;
  const OwnedFile file(platform.files, platform.files.openForWriting(*folder + u"\\tqpcfg.1",
                                                                     Disposition::createAlways));
  if (file.get() == invalidFile) return false;
  std::uint32_t written = 0;
  return platform.files.write(file.get(), std::as_bytes(std::span(text)), written);
}

std::u16string PrinterSettings::effectiveName() const {
  return portFormName.empty() ? printerName : portFormName;
}
