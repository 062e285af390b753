// The packet is put together from fixed texts and escaped values. Its order and its line ends are
// what PDF/A checkers have accepted; nothing is sorted or indented.
#include "umpd/XmpPacket.h"

#include <cstddef>
#include <cstdlib>

#include "umpd/XmlText.h"
#include "umpd/platform/WideText.h"

namespace umpd {
namespace {

// The packet has no byte-order mark: `begin` stays empty.
constexpr std::u16string_view packetBegin =
    u"<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
    u"<x:xmpmeta xmlns:x='adobe:ns:meta/'>\n"
    u"<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'"
    u" xmlns:iX='http://ns.adobe.com/iX/1.0/'>\n";
constexpr std::u16string_view pdfBegin =
    u"<rdf:Description rdf:about='' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'\n";
constexpr std::u16string_view xapBegin =
    u"<rdf:Description rdf:about='' xmlns:xap='http://ns.adobe.com/xap/1.0/'\n";
constexpr std::u16string_view emptyElementEnd = u"/>\n";
constexpr std::u16string_view dublinCoreBegin =
    u"<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'>\n";
constexpr std::u16string_view dublinCoreEnd = u"</rdf:Description>\n";
constexpr std::u16string_view packetEnd =
    u"<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id.html'\n"
    u"pdfaid:part='1'\n"
    u"pdfaid:conformance='B'\n"
    u"/>\n"
    u"</rdf:RDF>\n"
    u"</x:xmpmeta>\n"
    u"<?xpacket end='w'?>\n";

// Escaped text between the two; nothing at all for an empty text.
void appendProperty(std::u16string& packet, std::u16string_view before, std::u16string_view text,
                    std::u16string_view after) {
  if (text.empty()) {
    return;
  }
  packet += before;
  packet += escapeXmlText(text);
  packet += after;
}

// Not escaped: no date has a character that would need it.
void appendDate(std::u16string& packet, std::u16string_view before, std::u16string_view date) {
  packet += before;
  packet += date;
  packet += u"'\n";
}

void appendPadded(std::u16string& text, int value, size_t width) {
  const std::u16string digits = decimalText(static_cast<uint32_t>(value));
  if (digits.size() < width) {
    text.append(width - digits.size(), u'0');
  }
  text += digits;
}

// `bias` is what must be added to local time to reach UTC: the sign of the text is the other one.
void appendOffset(std::u16string& text, int32_t bias) {
  if (bias == 0) {
    text += u'Z';
    return;
  }
  text += bias < 0 ? u'+' : u'-';
  appendPadded(text, std::abs(bias / 60), 2);
  text += u':';
  appendPadded(text, std::abs(bias % 60), 2);
}

}  // namespace

std::u16string buildXmpPacket(Clock& clock, const XmpProperties& properties) {
  // Read once: the dates of one packet must not differ.
  std::u16string now;
  if (properties.modifyDate.empty() || properties.createDate.empty()) {
    now = formatXmpDate(clock, clock.now());
  }
  const auto orNow = [&now](std::u16string_view date) {
    return date.empty() ? std::u16string_view(now) : date;
  };

  std::u16string packet(packetBegin);
  if (!properties.producer.empty() || !properties.keywords.empty()) {
    packet += pdfBegin;
    appendProperty(packet, u"pdf:Producer='", properties.producer, u"'\n");
    appendProperty(packet, u"pdf:Keywords='", properties.keywords, u"'\n");
    packet += emptyElementEnd;
  }
  packet += xapBegin;
  appendProperty(packet, u"xap:CreatorTool='", properties.creatorTool, u"'\n");
  appendDate(packet, u"xap:ModifyDate='", orNow(properties.modifyDate));
  appendDate(packet, u"xap:CreateDate='", orNow(properties.createDate));
  packet += emptyElementEnd;
  if (!properties.title.empty() || !properties.author.empty() || !properties.subject.empty()) {
    packet += dublinCoreBegin;
    appendProperty(packet, u"<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>", properties.title,
                   u"</rdf:li></rdf:Alt></dc:title>\n");
    appendProperty(packet, u"<dc:creator><rdf:Seq><rdf:li>", properties.author,
                   u"</rdf:li></rdf:Seq></dc:creator>\n");
    appendProperty(packet, u"<dc:description><rdf:Alt><rdf:li xml:lang='x-default'>",
                   properties.subject, u"</rdf:li></rdf:Alt></dc:description>\n");
    packet += dublinCoreEnd;
  }
  packet += packetEnd;
  return packet;
}

// Fields are padded with zeros, the year to four digits.
std::u16string formatXmpDate(Clock& clock, int64_t time) {
  const std::optional<CalendarTime> local = clock.localTime(time);
  if (!local) {
    return {};
  }
  std::u16string text;
  appendPadded(text, local->year, 4);
  const auto appendField = [&text](char16_t separator, int value) {
    text += separator;
    appendPadded(text, value, 2);
  };
  appendField(u'-', local->month);
  appendField(u'-', local->day);
  appendField(u'T', local->hour);
  appendField(u':', local->minute);
  appendField(u':', local->second);
  appendOffset(text, clock.timeZoneBias());
  return text;
}

}  // namespace umpd
