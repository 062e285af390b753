#include "umpd/ConfigStore.h"

#include <algorithm>

#include "umpd/Folders.h"
#include "umpd/UserHive.h"
#include "umpd/WideText.h"

namespace {

constexpr std::u16string_view configFile = u"tqpconf.ini";
constexpr std::u16string_view commonSection = u"init";
constexpr std::size_t sectionCapacity = 5000;

bool isDigitsOnly(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

OwnedKey openPrinterKey(PrinterSettings& settings, std::uint32_t access) {
  Platform& platform = settings.platform;
  const std::u16string name = settings.effectiveName();
  std::u16string subkey = std::u16string(productKey) + withCommas(name);
  subkey.resize(std::min(subkey.size(), pathCapacity - 1));

  CreatedKey printer = platform.registry.createKey(getHKCU(platform, access).get(), subkey, access);
  // The defaults go through this function again; the key stands by then.
  if (printer.key && printer.created && !name.empty()) settings.writeDefaultSettings();
  return std::move(printer.key);
}

std::vector<StringMap::Pair> pairsOfSection(std::u16string_view section) {
  std::vector<StringMap::Pair> pairs;
  while (true) {
    const std::size_t end = section.find(u'\0');
    if (end == 0 || end == std::u16string_view::npos) return pairs;
    const std::u16string_view text = section.substr(0, end);
    section.remove_prefix(end + 1);
    const std::size_t equals = text.find(u'=');
    if (equals != std::u16string_view::npos && equals + 1 < text.size())
      pairs.push_back(
          {std::u16string(text.substr(0, equals)), std::u16string(text.substr(equals + 1))});
  }
}

bool mergeConfigSection(PrinterSettings& settings, bool writing,
                        const std::optional<std::u16string>& section) {
  const auto path = driverFile(settings.platform, configFile);
  if (!path) return false;
  const std::u16string name = withCommas(section ? *section : settings.effectiveName());
  if (name.empty()) return false;
  const std::u16string texts = settings.platform.profiles.readSection(*path, name, sectionCapacity);
  if (texts.empty()) return false;
  for (const auto& [key, value] : pairsOfSection(texts)) {
    settings.params.set(key, value);
    if (writing) setRegistryValue(settings, key, value);
  }
  return true;
}

void applyOverrideUserSettings(PrinterSettings& settings) {
  const std::u16string common(commonSection);
  const auto path = driverFile(settings.platform, configFile);
  if (!path || settings.platform.profiles.readInt(*path, common, u"overrideUserSettings", 0) == 0)
    return;
  mergeConfigSection(settings, true, common);
  // Last, so that the printer's own section wins.
  mergeConfigSection(settings, true, std::nullopt);
}

bool setRegistryValue(PrinterSettings& settings, const std::u16string& key,
                      const std::u16string& value) {
  Registry& registry = settings.platform.registry;
  const OwnedKey printer = openPrinterKey(settings, keyWrite);
  if (isDigitsOnly(value)) return registry.writeDword(printer.get(), key, decimalValue(value));
  return registry.writeText(printer.get(), key, value);
}
