// What all implementations of the platform have in common: the tests of the system's version, and
// values of the registry as texts and numbers.
#include "umpd/platform/Platform.h"

#include <algorithm>

namespace umpd {

// Windows 98 also calls itself version 4, of another line.
bool SystemVersion::isNt4() {
  const auto version = query();
  return version && version->major == 4 && version->platformId == 2;
}

bool SystemVersion::isWin9x() {
  const auto version = query();
  return version && version->platformId == 1;
}

bool SystemVersion::isWin2kOrLater() {
  const auto version = query();
  return version && version->major >= 5;
}

bool SystemVersion::isVistaOrLater() {
  const auto version = query();
  return version && version->major > 5;
}

// Byte by byte: the data need not be aligned, and need not end in a terminator.
std::u16string RegistryValue::text() const {
  std::u16string result;
  for (size_t i = 0; i + 1 < data.size(); i += 2) {
    const auto unit = static_cast<char16_t>(std::to_integer<unsigned>(data[i]) |
                                            std::to_integer<unsigned>(data[i + 1]) << 8);
    if (unit == 0) {
      break;
    }
    result += unit;
  }
  return result;
}

uint32_t RegistryValue::dword() const {
  uint32_t value = 0;
  for (size_t i = 0; i < std::min<size_t>(data.size(), 4); ++i) {
    value |= std::to_integer<uint32_t>(data[i]) << (8 * i);
  }
  return value;
}

bool Registry::writeText(KeyHandle key, const std::u16string& name, const std::u16string& text) {
  return writeValue(key, name, registryText,
                    std::as_bytes(std::span(text.c_str(), text.size() + 1)));
}

// Low byte first, as all systems that have a registry keep numbers.
bool Registry::writeDword(KeyHandle key, const std::u16string& name, uint32_t value) {
  return writeValue(key, name, registryDword, std::as_bytes(std::span(&value, 1)));
}

void ProcessState::reset() {
  driverDirectory.clear();
  domainControllerView.reset();
  domainControllerMapping.reset();
  randomSeeded = false;
}

}  // namespace umpd
