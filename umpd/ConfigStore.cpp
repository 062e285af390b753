// A printer's name is the last part of its key's path and the name of its section in the file.
// Neither can hold a backslash, so a comma stands for each: "\\server\laser" is ",,server,laser".
#include "umpd/ConfigStore.h"

#include <algorithm>
#include <cstddef>

#include "umpd/Folders.h"
#include "umpd/ProductNames.h"
#include "umpd/UserHive.h"
#include "umpd/platform/WideText.h"

namespace umpd {
namespace {

// In characters. A longer section is cut, and its last text is lost.
constexpr size_t sectionCapacity = 5000;

bool isDigitsOnly(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

// A hive that cannot be had is a null key, and every call with that fails without a word.
OwnedKey openProductKey(Platform& platform, uint32_t access) {
  const OwnedKey hive = getHKCU(platform, access);
  return platform.registry.createKey(hive.get(), std::u16string(productKey), access).key;
}

CreatedKey openPrinterKey(Platform& platform, std::u16string_view name, uint32_t access) {
  std::u16string subkey = std::u16string(productKey) + withCommas(name);
  // A longer path was always cut here: printers with such names keep the keys that they have.
  subkey.resize(std::min(subkey.size(), pathCapacity - 1));
  return platform.registry.createKey(getHKCU(platform, access).get(), subkey, access);
}

// An empty value passes for digits, and becomes the number 0.
bool writeRegistryValue(Registry& registry, KeyHandle key, const std::u16string& name,
                        const std::u16string& value) {
  if (isDigitsOnly(value)) {
    return registry.writeDword(key, name, decimalValue(value));
  }
  return registry.writeText(key, name, value);
}

std::optional<std::vector<StringMap::Pair>> readConfigSection(Platform& platform,
                                                              std::u16string_view section) {
  const auto path = driverFile(platform, configFileName);
  if (!path || section.empty()) {
    return std::nullopt;
  }
  const std::u16string texts =
      platform.profiles.readSection(*path, withCommas(section), sectionCapacity);
  if (texts.empty()) {
    return std::nullopt;
  }
  return pairsOfSection(texts);
}

// The call reads leading digits: "1" and "1 ; note" say yes, "yes" says no.
bool overridesUserSettings(Platform& platform) {
  const auto path = driverFile(platform, configFileName);
  return path && platform.profiles.readInt(*path, u"init", u"overrideUserSettings", 0) != 0;
}

std::vector<StringMap::Pair> pairsOfSection(std::u16string_view section) {
  std::vector<StringMap::Pair> pairs;
  while (true) {
    const size_t end = section.find(u'\0');
    // Without its NUL a text was cut by the buffer, and its value may not be whole.
    if (end == 0 || end == std::u16string_view::npos) {
      return pairs;
    }
    const std::u16string_view text = section.substr(0, end);
    section.remove_prefix(end + 1);
    const size_t equals = text.find(u'=');
    if (equals != std::u16string_view::npos && equals + 1 < text.size()) {
      pairs.push_back(
          {std::u16string(text.substr(0, equals)), std::u16string(text.substr(equals + 1))});
    }
  }
}

}  // namespace umpd
