// Whatever a title holds, no mark-up and no control character is left of it.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "umpd/XmlText.h"

namespace umpd {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::u16string text(size / sizeof(char16_t), u'\0');
  if (!text.empty()) {
    std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
  }
  const std::u16string xml = escapeXmlText(text);
  if (xml.size() < text.size()) {
    __builtin_trap();
  }
  for (const char16_t c : xml) {
    if (c < 32 || c == u'<' || c == u'>' || c == u'"' || c == u'\'') {
      __builtin_trap();
    }
  }
  return 0;
}

}  // namespace umpd
