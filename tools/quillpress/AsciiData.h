// AsciiData: data that a program gave as text, decoded as the PDF filters of these names do it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillpress {

// None if the text is no such data.
std::optional<std::string> decodeAsciiHex(std::string_view text);
std::optional<std::string> decodeAscii85(std::string_view text);

}  // namespace quillpress
