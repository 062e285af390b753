#include "umpd/XmpPacket.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"
#include "tests/umpd/XmpTexts.h"

namespace umpd {
namespace {

using XmpPacketTest = OnMachine;

TEST_F(XmpPacketTest, APacketWithEverythingAsksNoClock) {
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

TEST_F(XmpPacketTest, APacketWithNothingHasOneMomentTwice) {
  EXPECT_EQ(narrow(buildXmpPacket(machine_.clock, {})), head + xap + dates + tail);
  EXPECT_EQ(machine_.journal.count("now"), 1u);
}

TEST_F(XmpPacketTest, EachPropertyBringsItsElement) {
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

TEST_F(XmpPacketTest, DatesBearTheOffsetOfStandardTime) {
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

}  // namespace
}  // namespace umpd
