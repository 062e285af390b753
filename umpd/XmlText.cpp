// Five characters have names in XML. Control characters are written by their codes: most of them no
// XML may hold, but what reads the packet accepts them so.
#include "umpd/XmlText.h"

namespace umpd {
namespace {

// For the characters that XML has names for; else nothing.
std::u16string_view entityOf(char16_t c) {
  switch (c) {
    case u'"':
      return u"&quot;";
    case u'&':
      return u"&amp;";
    case u'\'':
      return u"&apos;";
    case u'<':
      return u"&lt;";
    case u'>':
      return u"&gt;";
    default:
      return {};
  }
}

// Below 32; line feeds and tabs too, which attributes would lose otherwise.
void appendControlCharacter(std::u16string& xml, char16_t c) {
  constexpr std::u16string_view digits = u"0123456789abcdef";
  xml += u"&#x";
  if (c >= 16) {
    xml += digits[c / 16];
  }
  xml += digits[c % 16];
  xml += u';';
}

}  // namespace

std::u16string escapeXmlText(std::u16string_view text) {
  std::u16string xml;
  xml.reserve(text.size());
  for (const char16_t c : text) {
    if (const std::u16string_view entity = entityOf(c); !entity.empty()) {
      xml += entity;
    } else if (c < 32) {
      appendControlCharacter(xml, c);
    } else {
      xml += c;
    }
  }
  return xml;
}

}  // namespace umpd
