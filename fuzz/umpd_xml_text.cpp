// Whatever a title holds, no mark-up and no control character is left of it.
#include <cstdint>
#include <cstring>
#include <string>

#include "umpd/XmlText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::u16string text(size / sizeof(char16_t), u'\0');
  if (!text.empty()) std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
  const std::u16string xml = escapeXmlText(text);
  if (xml.size() < text.size()) __builtin_trap();
  for (const char16_t c : xml)
    if (c < 32 || c == u'<' || c == u'>' || c == u'"' || c == u'\'') __builtin_trap();
  return 0;
}
