// The XMP packet, to the character, and the values that it is made of.
#include "umpd/DocInfo.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"
#include "umpd/SettingTexts.h"
#include "umpd/XmpPacket.h"

namespace umpd {
namespace {

const std::u16string key = u"HKCU\\Software\\Quillpress\\Tarnwick Quillpress";

const std::string head = R"(<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>
<x:xmpmeta xmlns:x='adobe:ns:meta/'>
<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' )"
                         R"(xmlns:iX='http://ns.adobe.com/iX/1.0/'>
)";
const std::string pdf = "<rdf:Description rdf:about='' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'\n";
const std::string xap = "<rdf:Description rdf:about='' xmlns:xap='http://ns.adobe.com/xap/1.0/'\n";
const std::string dates = R"(xap:ModifyDate='2006-01-02T15:04:05Z'
xap:CreateDate='2006-01-02T15:04:05Z'
/>
)";
const std::string tail =
    R"(<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id.html'
pdfaid:part='1'
pdfaid:conformance='B'
/>
</rdf:RDF>
</x:xmpmeta>
<?xpacket end='w'?>
)";

class DocInfoTest : public OnMachine {
 protected:
  // What stands between two texts of the job's packet; "(none)" without the first.
  std::string inPacket(const std::string& before, const std::string& after,
                       std::u16string_view docName = u"doc") {
    const std::string packet = narrow(makeXmp(settings_, docName));
    const size_t at = packet.find(before);
    if (at == packet.npos) {
      return "(none)";
    }
    const size_t start = at + before.size();
    return packet.substr(start, packet.find(after, start) - start);
  }
  std::string title(std::u16string_view docName) {
    return inPacket("<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>", "<", docName);
  }

  PrinterSettings settings_{platform_};
};

TEST_F(DocInfoTest, APacketWithEverythingAsksNoClock) {
  const std::string middle = R"(pdf:Producer='P&quot;'
pdf:Keywords='K&apos;'
/>
)" + xap + R"(xap:CreatorTool='C&#x9;&#x1f;&#x10; '
xap:ModifyDate='<modified>'
xap:CreateDate='<created>'
/>
<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'>
<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>T&lt;</rdf:li></rdf:Alt></dc:title>
<dc:creator><rdf:Seq><rdf:li>A&amp;</rdf:li></rdf:Seq></dc:creator>
<dc:description><rdf:Alt><rdf:li xml:lang='x-default'>S&gt;</rdf:li></rdf:Alt></dc:description>
</rdf:Description>
)";
  const XmpProperties all{u"T<",  u"A&",           u"S>",        u"K'",
                          u"P\"", u"C\t\x1f\x10 ", u"<created>", u"<modified>"};
  EXPECT_EQ(narrow(buildXmpPacket(machine_.clock, all)), head + pdf + middle + tail);
  EXPECT_EQ(machine_.journal.count("now"), 0u);
}

TEST_F(DocInfoTest, APacketWithNothingHasOneMomentTwice) {
  EXPECT_EQ(narrow(buildXmpPacket(machine_.clock, {})), head + xap + dates + tail);
  EXPECT_EQ(machine_.journal.count("now"), 1u);
  EXPECT_EQ(narrow(makeXmp(settings_, u"")), head + pdf + "pdf:Producer='Quillpress'\n/>\n" + xap +
                                                 "xap:CreatorTool='Quillpress'\n" + dates + tail);
}

TEST_F(DocInfoTest, EachPropertyBringsItsElement) {
  const std::string dc = "elements/1.1/'>\n<dc:", now = "'2006-01-02T15:04:05Z'";
  const std::pair<std::u16string_view XmpProperties::*, std::string> cases[] = {
      {&XmpProperties::keywords, pdf + "pdf:Keywords='v'\n/>\n" + xap},
      {&XmpProperties::author, dc + "creator><rdf:Seq><rdf:li>v</"},
      {&XmpProperties::subject, dc + "description><rdf:Alt><rdf:li xml:lang='x-default'>v</"},
      {&XmpProperties::createDate, "xap:ModifyDate=" + now + "\nxap:CreateDate='v'"},
      {&XmpProperties::modifyDate, "xap:ModifyDate='v'\nxap:CreateDate=" + now}};
  for (const auto& [property, expected] : cases) {
    XmpProperties one;
    one.*property = u"v";
    const std::string packet = narrow(buildXmpPacket(machine_.clock, one));
    EXPECT_NE(packet.find(expected), packet.npos) << packet;
  }
}

TEST_F(DocInfoTest, EnableGovernsTitleAndAuthorAlone) {
  for (const char16_t* name :
       {u"DocInfoTitle", u"DocInfoAuthor", u"DocInfoSubject", u"DocInfoKeywords", u"DocInfoCreator",
        u"DocInfoProducer", u"DocInfoCreationDate", u"DocInfoModDate"}) {
    machine_.registry.setText(key, name, name);
  }
  for (const bool enable : {false, true}) {
    machine_.registry.setDword(key, u"DocInfoEnable", enable);
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
      {u"C:\\dir/doc", "doc"}, {u"/a\\b", "b"}, {u"\\doc", "\\doc"}, {u"dir\\", "(none)"}};
  for (const auto& [docName, expected] : cases) {
    EXPECT_EQ(title(docName), expected);
  }
}

TEST_F(DocInfoTest, WhatCannotBeReadStaysAsItWas) {
  settings_.loadSettings();  // makes the key
  machine_.registry.setText(key, u"DocInfoTitle", std::u16string(1999, u't'));
  machine_.registry.setText(key, u"DocInfoAuthor", std::u16string(2000, u'a'));
  machine_.registry.setText(key, u"DocInfoEnable", u"12345");
  DocInfoValues values{5, u"before", u"before", u"before", {}, {}, {}, {}, {}};
  readDocInfo(values, settings_);
  EXPECT_EQ(values.enable, 0u);
  EXPECT_EQ(values.title.size(), 1999u);
  EXPECT_EQ(values.author, u"before");
  EXPECT_EQ(values.subject, u"");

  values.enable = 5;
  machine_.journal.failAlways("createKey");
  readDocInfo(values, settings_);
  EXPECT_EQ(values.enable, 0u);
  EXPECT_EQ(values.title.size(), 1999u);
  EXPECT_EQ(simulated_.openHandles(), 0u);
}

TEST_F(DocInfoTest, DatesBearTheOffsetOfStandardTime) {
  const std::pair<int32_t, const char*> cases[] = {{0, "2006-01-02T15:04:05Z"},
                                                   {300, "2006-01-02T10:04:05-05:00"},
                                                   {-570, "2006-01-03T00:34:05+09:30"},
                                                   {-45, "2006-01-02T15:49:05+00:45"}};
  for (const auto& [bias, expected] : cases) {
    machine_.clock.bias = bias;
    EXPECT_EQ(narrow(formatXmpDate(machine_.clock, machine_.clock.time)), expected);
  }
  machine_.clock.daylightMinutes = 60;
  EXPECT_EQ(formatXmpDate(machine_.clock, machine_.clock.time), u"2006-01-02T16:49:05+00:45");
  machine_.journal.failAlways("localTime");
  EXPECT_EQ(formatXmpDate(machine_.clock, machine_.clock.time), u"");
}

TEST_F(DocInfoTest, APacketMustFitWhole) {
  const std::u16string packet = makeXmp(settings_, u"d");
  std::u16string buffer(packet.size() + 1, u'?');
  copySettingText(settings_, u"d", u"pdfaXML", buffer.data(), packet.size() + 1, u"default");
  EXPECT_EQ(buffer, packet + u'\0');
  copySettingText(settings_, u"d", u"pdfaXML", buffer.data(), packet.size(), u"default");
  EXPECT_EQ(buffer, u'\0' + packet.substr(1) + u'\0');
  copySettingText(settings_, u"d", u"pdfaXML", nullptr, 0, u"default");

  settings_.params.set(u"pdfaxml", u"a setting");
  copySettingText(settings_, u"d", u"PDFAXML", buffer.data(), buffer.size(), nullptr);
  EXPECT_STREQ(narrow(buffer).c_str(), "a setting");
}

TEST_F(DocInfoTest, Utf8TakesWhatFits) {
  const auto utf8 = [this](std::string_view name, size_t size) {
    std::string buffer(size, '?');
    copySettingUtf8(settings_, u"d\u00e9\u20ac", name, buffer);
    return buffer;
  };
  EXPECT_EQ(utf8("pdfaxml", 5000), std::string(5000, '?'));
  const std::string whole = utf8("pdfaXML", 5000);
  EXPECT_NE(whole.find(">d\xc3\xa9\xe2\x82\xac</rdf:li>"), whole.npos);
  EXPECT_EQ(whole.find(tail + '\0' + '?') + tail.size(), whole.find('\0'));
  EXPECT_EQ(utf8("pdfaXML", head.size()), head);
}

}  // namespace
}  // namespace umpd
