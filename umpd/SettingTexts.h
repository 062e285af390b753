// SettingTexts: a job's settings as text for those who ask from outside the library. One of them is
// no setting: the key "pdfaXML", in just this spelling, is the document's XMP packet.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "umpd/PrinterSettings.h"

namespace umpd {

// Into a buffer of `size` characters. A packet that does not fit with its terminator becomes an
// empty text. For any other key as PrinterSettings::getSettingString, its unbounded default
// included.
void copySettingText(PrinterSettings& settings, std::u16string_view docName,
                     std::u16string_view key, char16_t* buffer, size_t size,
                     const char16_t* defaultText);

// Knows the packet only, as UTF-8; another key leaves the buffer as it is. Too small a buffer gets
// what fits, without a terminator.
void copySettingUtf8(PrinterSettings& settings, std::u16string_view docName, std::string_view key,
                     std::span<char> buffer);

}  // namespace umpd
