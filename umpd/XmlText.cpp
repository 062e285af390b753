#include "umpd/XmlText.h"

namespace {

// Below 32; line feeds and tabs too, which attributes would lose otherwise.
void appendControlCharacter(std::u16string& xml, char16_t c) {
  constexpr std::u16string_view digits = u"0123456789abcdef";
  xml += u"&#x";
  if (c >= 16) xml += digits[c / 16];
  xml += digits[c % 16];
  xml += u';';
}

}  // namespace

std::u16string escapeXmlText(std::u16string_view text) {
  std::u16string xml;
  xml.reserve(text.size());
  for (const char16_t c : text) {
    switch (c) {
      case u'"':
        xml += u"&quot;";
        break;
      case u'&':
        xml += u"&amp;";
        break;
      case u'\'':
        xml += u"&apos;";
        break;
      case u'<':
        xml += u"&lt;";
        break;
      case u'>':
        xml += u"&gt;";
        break;
      default:
        if (c < 32) {
          appendControlCharacter(xml, c);
        } else {
          xml += c;
        }
    }
  }
  return xml;
}
