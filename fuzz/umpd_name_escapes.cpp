// Any text may stand in a document's name. Decoding never makes it longer, and what is decoded of
// an escape is fit for a file name.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "umpd/NameEscapes.h"

namespace umpd {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::u16string text(size / sizeof(char16_t), u'\0');
  if (!text.empty()) {
    std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
  }
  const std::u16string decoded = decodeNameEscapes(text);
  if (decoded.size() > text.size()) {
    __builtin_trap();
  }
  for (const char16_t c : decoded) {
    if (!isAllowedNameChar(c) && c != u'_' && text.find(c) == text.npos) {
      __builtin_trap();
    }
  }
  return 0;
}

}  // namespace umpd
