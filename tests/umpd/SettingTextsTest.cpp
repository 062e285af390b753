#include "umpd/SettingTexts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"
#include "tests/umpd/XmpTexts.h"
#include "umpd/DocInfo.h"

namespace umpd {
namespace {

class SettingTextsTest : public OnMachine {
 protected:
  PrinterSettings settings_{platform_};
};

TEST_F(SettingTextsTest, APacketMustFitWhole) {
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

TEST_F(SettingTextsTest, Utf8TakesWhatFits) {
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
