// Each row of the table is one job on a fresh machine: settings, document's name, path. Settings
// are `key=value` with `|` between them; "DefaultSaveDir" is C:\out unless they say otherwise, and
// random numbers run from 17 on.
#include "umpd/SetFilename.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/umpd/Wide.h"
#include "umpd/platform/simulated/SimulatedPlatform.h"

namespace umpd {
namespace {

class Naming {
 public:
  explicit Naming(std::string_view given = {}) {
    set("DefaultSaveDir=C:\\out");
    set(given);
    simulated.machine.random.planned = {17, 18, 19, 20, 21};
  }

  void set(std::string_view given) {
    while (!given.empty()) {
      const std::string_view pair = given.substr(0, given.find('|'));
      const size_t equals = pair.find('=');
      settings.params.set(wide(pair.substr(0, equals)), wide(pair.substr(equals + 1)));
      given.remove_prefix(std::min(pair.size() + 1, given.size()));
    }
  }
  std::string name(std::string_view document, size_t size = savePathCapacity) {
    succeeded = SetFilename(settings).setOutputFilename(wide(document), out, size);
    return narrow(out);
  }
  void add(std::string_view path, const std::string& content = "") {
    simulated.machine.files.addFile(wide(path), content);
  }

  SimulatedPlatform simulated;
  PrinterSettings settings{simulated.platform};
  std::u16string out;
  bool succeeded = false;
};

const std::string ext20 = ".abcdefghijklmnopqrs";
const std::string dir519 = "DefaultSaveDir=C:\\" + std::string(516, 'd');

struct Case {
  std::string settings, document, path;
  size_t size = savePathCapacity;
};

const Case namings[] = {
    // Prefix and old extension.
    {"", "Editor - a.b.doc", R"(C:\out\a.b.pdf)"},
    {"", "x-y-z.txt", R"(C:\out\y-z.pdf)"},
    {"", "x-  \ty", R"(C:\out\_y.pdf)"},
    {"TrimNameChar=0", "a-b", R"(C:\out\a-b.pdf)"},
    {"TrimNameChar=65595", "a-b;c", R"(C:\out\c.pdf)"},
    {"", "Report.fin", R"(C:\out\Report.pdf)"},
    {"", "a.Report.final", R"(C:\out\a.Report.final.pdf)"},
    {"", ".doc", R"(C:\out\.doc.pdf)"},
    {"", ".", R"(C:\out\..pdf)"},
    // Characters; replacing reaches as far as the name did before it was cut.
    {"", "a:b*c\"d\\e/f\t\xBFg", R"(C:\out\a_b_c_d_e_f__g.pdf)"},
    {"DefaultSaveDir=C:\\a;b", ",()[].$`@{}~!#&_^ \xFFZ", "C:\\a;b\\,()[].$`@{}~!#&_^ \xFFZ.pdf"},
    {"DefaultExtension=.p;f", "ab.cd", R"(C:\out\ab.p_f)"},
    {"DefaultExtension=.p;f", "abcd", R"(C:\out\abcd.p;f)"},
    // Escapes, over the whole path.
    {"DefaultSaveDir=C:\\o+t", "%41b", R"(C:\o t\Ab.pdf)"},
    {"", "a%zzb", R"(C:\out\a)"},
    {"", "%41" + std::string(246, 'n') + "%41", R"(C:\out\A)" + std::string(246, 'n') + "A.pdf"},
    // Extensions: as it is, none, too long for its field, too long altogether.
    {"DefaultExtension=.prn", "x", R"(C:\out\x.prn)"},
    {"DefaultExtension=", "x", R"(C:\out\x.pdf)"},
    {"DefaultExtension=" + ext20.substr(1), "x", R"(C:\out\x)" + ext20.substr(1)},
    {"DefaultExtension=" + ext20, "x", R"(C:\out\x)" + ext20 + R"(C:\out)"},
    {"DefaultExtension=" + ext20 + ext20.substr(1), "x", R"(C:\out\x)" + ext20 + R"(C:\out)"},
    {"DefaultExtension=" + ext20 + ext20, "x", R"(C:\out\x.pdf)"},
    {dir519 + "|DefaultExtension=" + ext20, "x", R"(C:\)" + std::string(256, 'd')},
    // Directories. Without one the name becomes a directory, and another name is needed.
    {"DefaultSaveDir=C:/out/", "x", "C:/out/x.pdf"},
    {dir519 + "d", "x", "x.17.pdf"},
    {dir519, "x.doc", R"(C:\x.pdf)"},
    {"", "x", R"(C:\.pdf)", 7},
    // A name that comes to nothing cuts into the directory.
    {"DefaultSaveDir=C:\\a.bc", "x-", R"(C:\a.pdf)"},
    {"DefaultSaveDir=C:\\a.bcd", "x- ", R"(C:\a.bcd\.pdf)"},
    {"DefaultSaveDir=", "x-", ".17.pdf"},
    // Room.
    {"", "abcdefgh", R"(C:\out\abcd.pdf)", 16},
    {"", std::string(400, 'n'), R"(C:\out\)" + std::string(248, 'n') + ".pdf"},
    // The other rules, and no rule.
    {"SaveFilenameAction=2", "a-x", R"(C:\out\x.pdf)"},
    {"SaveFilenameAction=5", "a-x", R"(C:\out\x.pdf)"},
    {"SaveFilenameAction=4294967295", "x", ""},
    {"SaveFilenameAction=1|DefaultSaveFilename=a-b:c.doc", "x", R"(C:\out\a-b:c.doc)"},
    {"SaveFilenameAction=1|DefaultSaveFilename=name", "x", R"(C:\name)", 11},
    {"SaveFilenameAction=1|DefaultSaveDir=C:\\a.b", "x", R"(C:\a.17.pdf)"},
    {"SaveFilenameAction=4", "x", R"(C:\17.pdf)", 13},
    {"SaveFilenameAction=4", "x", R"(C:\out\17.pdf)", 14},
    {"SaveFilenameAction=4|DefaultSaveDir=", "x", "17.18.pdf"},
    // No document's name.
    {"DefaultSaveFilename=a-tmp.doc", "", R"(C:\out\tmp.pdf)"},
    {"DefaultSaveFilename=" + std::string(520, 'n'), "", R"(C:\out\17.pdf)"},
    {"", "", R"(C:\out\17.pdf)"},
};

TEST(SetFilename, NamesTheFile) {
  for (const Case& each : namings) {
    Naming naming(each.settings);
    EXPECT_EQ(naming.name(each.document, each.size), each.path) << each.settings;
    EXPECT_TRUE(naming.succeeded) << each.path;
  }
}

TEST(SetFilename, MakesTheDirectoryButNotTheFile) {
  Naming naming("DefaultSaveDir=C:\\new\\deep");
  EXPECT_EQ(naming.name("x"), "C:\\new\\deep\\x.pdf");
  EXPECT_TRUE(naming.simulated.machine.files.isDirectory(u"C:\\new\\deep"));
  EXPECT_EQ(naming.name("x"), "C:\\new\\deep\\x.pdf");
  // A separator in front parts nothing off.
  naming.set("DefaultSaveDir=\\");
  naming.name("x");
  EXPECT_TRUE(naming.simulated.machine.files.isDirectory(u"x.pdf"));
  // A server's directory that stands is not made again, in the current directory.
  naming.simulated.machine.files.addDirectory(u"\\\\srv\\out");
  naming.set("DefaultSaveDir=\\\\srv\\out");
  EXPECT_EQ(naming.name("x"), "\\\\srv\\out\\x.pdf");
  EXPECT_FALSE(naming.simulated.machine.files.isDirectory(u"srv"));
}

TEST(SetFilename, EachCollisionWorksOnTheLastDotWithinTheRoom) {
  Naming naming("DefaultExtension=.prn");
  naming.add("C:\\out\\abcd.prn");
  naming.add("C:\\out\\abcd.17.pdf");
  EXPECT_EQ(naming.name("abcd"), "C:\\out\\abcd.17.18.pdf");
  EXPECT_EQ(naming.name("abcdefgh", 16), "C:\\out\\abcd.19.");
}

// A device's name exists in every directory, whatever number is put into it.
TEST(SetFilename, ANameOfADeviceGetsAnUnderscore) {
  const std::pair<const char*, const char*> cases[] = {{"con", "C:\\out\\_con.pdf"},
                                                       {"Editor - NUL.doc", "C:\\out\\_NUL.pdf"},
                                                       {"com1 .doc", "C:\\out\\_com1 .pdf"},
                                                       {"lpt9.a.b", "C:\\out\\_lpt9.a.pdf"}};
  for (const auto& [document, path] : cases) {
    Naming naming;
    EXPECT_EQ(naming.name(document), path);
    EXPECT_TRUE(naming.succeeded);
    EXPECT_EQ(naming.simulated.machine.journal.count("random"), 99u);
  }
  // Without a directory the directory of that name is there already.
  Naming naming("SaveFilenameAction=1|DefaultSaveDir=|DefaultSaveFilename=c:aux.x");
  EXPECT_EQ(naming.name(""), "c:_aux.x");
  // Room for the underscore there is none.
  EXPECT_EQ(Naming().name("con", 15).size(), 14u);
}

TEST(SetFilename, TriesAThousandNamesAndNoMore) {
  for (const int existing : {99, 100, 999, 1000}) {
    Naming naming;
    Journal& journal = naming.simulated.machine.journal;
    // A busy folder: others have each name as soon as this job thinks of it.
    journal.before("attributes", [&] {
      const std::u16string path = journal.last("attributes");
      if (journal.count("seed") != 0 && journal.count("random") < static_cast<size_t>(existing)) {
        naming.simulated.machine.files.addFile(path, "");
      }
    });
    const std::string name = naming.name("x");
    EXPECT_EQ(name.starts_with("C:\\out\\_x."), existing >= 100) << name;
    EXPECT_EQ(naming.succeeded, existing < 999) << existing;
  }
}

TEST(SetFilename, GivesUpARandomNameAfterElevenTries) {
  Naming naming("SaveFilenameAction=4");
  naming.add("C:\\out\\17.pdf");
  EXPECT_EQ(naming.name(""), "C:\\out\\18.pdf");
  naming.add("C:\\out\\18.pdf");
  naming.simulated.machine.random.planned = {17, 17, 17, 17, 17, 17, 17, 17, 17, 17, 18, 99};
  EXPECT_EQ(naming.name(""), "C:\\out\\18.99.pdf");
}

TEST(SetFilename, SeedsRandomNamesOnceAndCollisionsAlways) {
  Naming naming("SaveFilenameAction=4");
  naming.simulated.machine.processes.threadId = 0x10001;
  naming.simulated.machine.clock.ticks = 0x20003;
  naming.name("");
  naming.name("");
  EXPECT_EQ(naming.simulated.machine.random.seeds, std::vector<uint32_t>(3, 0x50003));
}

TEST(SetFilename, ReadsTheDefaultNameFromAFile) {
  Naming naming("DefaultSaveFilename=@C:\\name.txt");
  EXPECT_EQ(naming.name(""), "C:\\out\\@C__name.pdf");
  naming.add("C:\\name.txt", "n\xE4me.doc \t\r\nnext");
  EXPECT_EQ(naming.name(""), "C:\\out\\n\xE4me.pdf");
  naming.add("C:\\name.txt", " \nnext");
  EXPECT_EQ(naming.name(""), "C:\\out\\17.pdf");
  // At most 519 characters of it: the room that they leave decides on the directory.
  naming.set("SaveFilenameAction=1");
  naming.add("C:\\name.txt", std::string(600, 'n'));
  EXPECT_EQ(naming.name("", 519 + 8).substr(0, 8), "C:\\out\\n");
  EXPECT_EQ(naming.name("", 519 + 7).substr(0, 4), "C:\\n");
}

}  // namespace
}  // namespace umpd
