// The XMP packet, to the character, and the values that it is made of.
#include "umpd/DocInfo.h"

#include <gtest/gtest.h>

#include "tests/umpd/Wide.h"
#include "umpd/SettingTexts.h"
#include "umpd/XmpPacket.h"
#include "umpd/platform/simulated/SimulatedPlatform.h"

namespace {

const std::u16string key = u"HKCU\\Software\\Quillpress\\Tarnwick Quillpress";

const std::string head =
    "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
    "<x:xmpmeta xmlns:x='adobe:ns:meta/'>\n"
    "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' "
    "xmlns:iX='http://ns.adobe.com/iX/1.0/'>\n";
const std::string xap = "<rdf:Description rdf:about='' xmlns:xap='http://ns.adobe.com/xap/1.0/'\n";
const std::string tail =
    "<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id.html'\n"
    "pdfaid:part='1'\npdfaid:conformance='B'\n/>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end='w'?>\n";
const std::string dates =
    "xap:ModifyDate='2006-01-02T15:04:05Z'\nxap:CreateDate='2006-01-02T15:04:05Z'\n/>\n";

class DocInfoTest : public testing::Test {
 protected:
  void set(const char16_t* name, const char16_t* value) {
    machine.registry.setText(key, name, value);
  }
  // What stands between two texts of the job's packet; "(none)" without the first.
  std::string inPacket(const std::string& before, const std::string& after,
                       std::u16string_view docName = u"C:\\dir/doc") {
    const std::string packet = narrow(makeXmp(settings, docName));
    const std::size_t at = packet.find(before);
    if (at == packet.npos) return "(none)";
    const std::size_t start = at + before.size();
    return packet.substr(start, packet.find(after, start) - start);
  }
  std::string title(std::u16string_view docName) {
    return inPacket("<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>",
                    "</rdf:li></rdf:Alt></dc:title>\n", docName);
  }

  SimulatedPlatform simulated;
  SimulatedParts& machine = simulated.machine;
  PrinterSettings settings{simulated.platform};
};

TEST_F(DocInfoTest, APacketWithEverything) {
  const XmpProperties all{.title = u"T<",
                          .author = u"A&",
                          .subject = u"S>",
                          .keywords = u"K'",
                          .producer = u"P\"",
                          .creatorTool = u"C\t",
                          .createDate = u"<created>",
                          .modifyDate = u"<modified>"};
  EXPECT_EQ(narrow(buildXmpPacket(machine.clock, all)),
            head +
                "<rdf:Description rdf:about='' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'\n"
                "pdf:Producer='P&quot;'\npdf:Keywords='K&apos;'\n/>\n" +
                xap +
                "xap:CreatorTool='C&#x9;'\nxap:ModifyDate='<modified>'\n"
                "xap:CreateDate='<created>'\n/>\n"
                "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'>\n"
                "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>T&lt;</rdf:li></rdf:Alt>"
                "</dc:title>\n"
                "<dc:creator><rdf:Seq><rdf:li>A&amp;</rdf:li></rdf:Seq></dc:creator>\n"
                "<dc:description><rdf:Alt><rdf:li xml:lang='x-default'>S&gt;</rdf:li></rdf:Alt>"
                "</dc:description>\n</rdf:Description>\n" +
                tail);
  EXPECT_EQ(machine.journal.count("now"), 0u);
}

TEST_F(DocInfoTest, APacketWithNothingHasTheMomentTwice) {
  machine.journal.before("now", [this] { ++machine.clock.time; });
  --machine.clock.time;
  EXPECT_EQ(narrow(buildXmpPacket(machine.clock, {})), head + xap + dates + tail);
  EXPECT_EQ(machine.journal.count("now"), 1u);
}

TEST_F(DocInfoTest, TheProductsPacketNeedsNoValues) {
  EXPECT_EQ(narrow(makeXmp(settings, u"")),
            head +
                "<rdf:Description rdf:about='' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'\n"
                "pdf:Producer='Quillpress'\n/>\n" +
                xap + "xap:CreatorTool='Quillpress'\n" + dates + tail);
}

TEST_F(DocInfoTest, EnableGovernsTitleAndAuthorAlone) {
  for (const char16_t* name :
       {u"DocInfoTitle", u"DocInfoAuthor", u"DocInfoSubject", u"DocInfoKeywords", u"DocInfoCreator",
        u"DocInfoProducer", u"DocInfoCreationDate", u"DocInfoModDate"})
    set(name, name);
  for (const bool enable : {false, true}) {
    machine.registry.setDword(key, u"DocInfoEnable", enable);
    EXPECT_EQ(title(u"doc"), enable ? "DocInfoTitle" : "doc");
    EXPECT_EQ(inPacket("<dc:creator><rdf:Seq><rdf:li>", "<"), enable ? "DocInfoAuthor" : "(none)");
    EXPECT_EQ(inPacket("<dc:description><rdf:Alt><rdf:li xml:lang='x-default'>", "<"),
              "DocInfoSubject");
    EXPECT_EQ(inPacket("pdf:Keywords='", "'"), "DocInfoKeywords");
    EXPECT_EQ(inPacket("pdf:Producer='", "'"), "Quillpress");
    EXPECT_EQ(inPacket("xap:CreatorTool='", "'"), "Quillpress");
    EXPECT_EQ(inPacket("xap:CreateDate='", "'"), "2006-01-02T15:04:05Z");
  }
}

TEST_F(DocInfoTest, TheTitleIsTheDocumentsNameWithoutFolders) {
  const std::pair<const char16_t*, const char*> cases[] = {
      {u"C:\\dir/doc", "doc"}, {u"doc", "doc"},      {u"\\doc", "\\doc"},
      {u"/a\\b", "b"},         {u"dir\\", "(none)"}, {u"", "(none)"}};
  for (const auto& [docName, expected] : cases) EXPECT_EQ(title(docName), expected);
}

TEST_F(DocInfoTest, WhatCannotBeReadStaysAsItWas) {
  DocInfoValues values;
  values.enable = 5;
  values.title = values.author = values.subject = u"before";
  settings.loadSettings();
  set(u"DocInfoTitle", std::u16string(1999, u't').c_str());
  set(u"DocInfoAuthor", std::u16string(2000, u'a').c_str());
  set(u"DocInfoEnable", u"12345");
  readDocInfo(values, settings);
  EXPECT_EQ(values.enable, 0u);
  EXPECT_EQ(values.title.size(), 1999u);
  EXPECT_EQ(values.author, u"before");
  EXPECT_EQ(values.subject, u"");

  values.enable = 5;
  machine.journal.failAlways("createKey");
  readDocInfo(values, settings);
  EXPECT_EQ(values.enable, 0u);
  EXPECT_EQ(values.title.size(), 1999u);
  EXPECT_EQ(simulated.openHandles(), 0u);
}

TEST_F(DocInfoTest, DatesBearTheOffsetOfStandardTime) {
  const std::pair<std::int32_t, const char*> cases[] = {{0, "2006-01-02T15:04:05Z"},
                                                        {300, "2006-01-02T10:04:05-05:00"},
                                                        {-570, "2006-01-03T00:34:05+09:30"},
                                                        {-45, "2006-01-02T15:49:05+00:45"}};
  for (const auto& [bias, expected] : cases) {
    machine.clock.bias = bias;
    EXPECT_EQ(narrow(formatXmpDate(machine.clock, machine.clock.time)), expected);
  }
  machine.clock.bias = -60;
  machine.clock.daylightMinutes = 60;
  EXPECT_EQ(formatXmpDate(machine.clock, machine.clock.time), u"2006-01-02T17:04:05+01:00");
  machine.journal.failAlways("localTime");
  EXPECT_EQ(formatXmpDate(machine.clock, machine.clock.time), u"");
}

TEST_F(DocInfoTest, APacketMustFitWhole) {
  const std::u16string packet = makeXmp(settings, u"d");
  std::u16string buffer(packet.size() + 1, u'?');
  copySettingText(settings, u"d", u"pdfaXML", buffer.data(), packet.size() + 1, u"default");
  EXPECT_EQ(buffer, packet + u'\0');
  buffer.assign(buffer.size(), u'?');
  copySettingText(settings, u"d", u"pdfaXML", buffer.data(), packet.size(), u"default");
  EXPECT_EQ(buffer.substr(0, 2), std::u16string(u"\0?", 2));
  copySettingText(settings, u"d", u"pdfaXML", nullptr, 0, u"default");

  settings.params.set(u"pdfaxml", u"a setting");
  copySettingText(settings, u"d", u"PDFAXML", buffer.data(), buffer.size(), nullptr);
  EXPECT_STREQ(narrow(buffer).c_str(), "a setting");
}

TEST_F(DocInfoTest, OrComesAsUtf8) {
  const std::u16string docName = u"d\u00e9\u20ac";
  std::string buffer(5000, '?');
  copySettingUtf8(settings, docName, "pdfaxml", buffer);
  EXPECT_EQ(buffer, std::string(5000, '?'));
  copySettingUtf8(settings, docName, "pdfaXML", buffer);
  EXPECT_NE(buffer.find(">d\xc3\xa9\xe2\x82\xac</rdf:li>"), buffer.npos);
  EXPECT_EQ(buffer.find('?', buffer.find('\0')), buffer.find('\0') + 1);
  std::string small(head.size(), '?');
  copySettingUtf8(settings, docName, "pdfaXML", small);
  EXPECT_EQ(small, head);
}

}  // namespace
