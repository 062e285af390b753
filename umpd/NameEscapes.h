// NameEscapes: which characters a file name may hold, and the escapes that users may write where a
// setting or a document's name cannot hold a character itself: `+` for a blank, `%41` for an A.
#pragma once

#include <string>
#include <string_view>

namespace umpd {

// Digits, unaccented letters, the codes 192 to 255 and some punctuation. The code 0 counts as
// allowed.
bool isAllowedNameChar(char16_t c);

// The text with its escapes replaced, never longer than `text`. A code that is not allowed in a
// file name becomes `_`; the code 0, which is also the value of two characters that are no
// hexadecimal digits, ends the text.
std::u16string decodeNameEscapes(std::u16string_view text);

}  // namespace umpd
