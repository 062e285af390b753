// What a user has set about a printer's documents, and what comes of it in a job's packet.
#include "umpd/DocInfo.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"
#include "tests/umpd/XmpTexts.h"

namespace umpd {
namespace {

const std::u16string key = u"HKCU\\Software\\Quillpress\\Tarnwick Quillpress";

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

TEST_F(DocInfoTest, WithoutValuesThePacketNamesItsMaker) {
  EXPECT_EQ(narrow(makeXmp(settings_, u"")), head + pdf + "pdf:Producer='Quillpress'\n/>\n" + xap +
                                                 "xap:CreatorTool='Quillpress'\n" + dates + tail);
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

}  // namespace
}  // namespace umpd
