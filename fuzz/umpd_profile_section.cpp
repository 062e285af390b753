// Feeds the reader of a profile section with whatever a file may hold. Every pair that it gives
// must be a usable text of the section, in order.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "umpd/ConfigStore.h"

namespace umpd {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::u16string section(size / 2, u'\0');
  if (!section.empty()) {
    std::memcpy(section.data(), data, section.size() * 2);
  }
  size_t from = 0;
  for (const auto& [key, value] : pairsOfSection(section)) {
    std::u16string text = key;
    text += u'=';
    text += value;
    text += u'\0';
    const size_t at = section.find(text, from);
    if (at == std::u16string::npos || value.empty() || key.find(u'=') != std::u16string::npos) {
      __builtin_trap();
    }
    from = at + text.size();
  }
  return 0;
}

}  // namespace umpd
