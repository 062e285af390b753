// The packet is not stored anywhere: each question makes it from the registry as it is now.
#include "umpd/SettingTexts.h"

#include <algorithm>

#include "umpd/DocInfo.h"

namespace umpd {

// A packet that was cut would be no XML, so that it comes whole or not at all.
void copySettingText(PrinterSettings& settings, std::u16string_view docName,
                     std::u16string_view key, char16_t* buffer, size_t size,
                     const char16_t* defaultText) {
  if (key != u"pdfaXML") {
    settings.getSettingString(key, buffer, size, defaultText);
    return;
  }
  const std::u16string packet = makeXmp(settings, docName);
  if (packet.size() < size) {
    *std::ranges::copy(packet, buffer).out = 0;
  } else if (size > 0) {
    buffer[0] = 0;
  }
}

void copySettingUtf8(PrinterSettings& settings, std::u16string_view docName, std::string_view key,
                     std::span<char> buffer) {
  if (key == "pdfaXML") {
    settings.platform.text.toUtf8(makeXmp(settings, docName), buffer);
  }
}

}  // namespace umpd
