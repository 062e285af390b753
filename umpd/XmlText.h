// XmlText: plain text made fit for XML, in element content and in attributes alike.
#pragma once

#include <string>
#include <string_view>

namespace umpd {

std::u16string escapeXmlText(std::u16string_view text);

}  // namespace umpd
