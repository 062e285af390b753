// Each case of a table is one job on a fresh machine: settings and a document's name in, the path
// out. What else a naming does (directories, seeds, tries) is asked of the machine afterwards.
#include "umpd/SetFilename.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/umpd/Wide.h"
#include "umpd/platform/simulated/SimulatedPlatform.h"

namespace {

using Settings = std::vector<std::pair<std::string, std::string>>;

class Naming {
 public:
  explicit Naming(const Settings& given = {}) {
    set({{"DefaultSaveDir", "C:\\out"}});
    set(given);
    random().planned = {17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29};
  }

  void set(const Settings& given) {
    for (const auto& [key, value] : given) settings.params.set(wide(key), wide(value));
  }
  std::string name(std::string_view document, std::size_t size = savePathCapacity) {
    succeeded = SetFilename(settings).setOutputFilename(wide(document), out, size);
    return narrow(out);
  }
  SimulatedFiles& files() { return simulated.machine.files; }
  SimulatedRandom& random() { return simulated.machine.random; }

  SimulatedPlatform simulated;
  PrinterSettings settings{simulated.platform};
  std::u16string out;
  bool succeeded = false;
};

const std::string letters20 = ".abcdefghijklmnopqrs";
const std::string dirOf519 = "C:\\" + std::string(516, 'd');

struct Case {
  const char* name;
  Settings settings;
  std::string document;
  std::string path;
  std::size_t size = savePathCapacity;
};

const Case namings[] = {
    // Prefix and old extension.
    {"prefix_and_extension_go", {}, "Editor - a.b.doc", "C:\\out\\a.b.pdf"},
    {"first_trim_character_counts", {}, "x-y-z.txt", "C:\\out\\y-z.pdf"},
    {"blanks_go_but_no_tab", {}, "x-  \ty", "C:\\out\\_y.pdf"},
    {"trimming_off", {{"TrimNameChar", "0"}}, "a-b", "C:\\out\\a-b.pdf"},
    {"trim_character_is_16_bits", {{"TrimNameChar", "65595"}}, "a-b;c", "C:\\out\\c.pdf"},
    {"tail_of_three_goes", {}, "Report.fin", "C:\\out\\Report.pdf"},
    {"tail_of_four_stays", {}, "Report.final", "C:\\out\\Report.final.pdf"},
    {"last_dot_alone_is_looked_at", {}, "a.b.final", "C:\\out\\a.b.final.pdf"},
    {"dot_in_front_stays", {}, ".doc", "C:\\out\\.doc.pdf"},
    {"lone_dot_stays", {}, ".", "C:\\out\\..pdf"},
    // Characters.
    {"forbidden_become_underscores", {}, "a:b*c\"d\\e/f\t\xBFg", "C:\\out\\a_b_c_d_e_f__g.pdf"},
    {"allowed_stay",
     {},
     ",()[].$`@{}~!#&_^ \xC0\xFF"
     "aZ09q",
     "C:\\out\\,()[].$`@{}~!#&_^ \xC0\xFF"
     "aZ09q.pdf"},
    {"directory_keeps_its_characters", {{"DefaultSaveDir", "C:\\a;b"}}, "x", "C:\\a;b\\x.pdf"},
    {"extension_within_old_length_is_replaced",
     {{"DefaultExtension", ".p;f"}},
     "ab.cd",
     "C:\\out\\ab.p_f"},
    {"extension_behind_old_length_stays",
     {{"DefaultExtension", ".p;f"}},
     "abcd",
     "C:\\out\\abcd.p;f"},
    // Escapes, over the whole path.
    {"escape", {}, "%41b", "C:\\out\\Ab.pdf"},
    {"plus_in_the_directory", {{"DefaultSaveDir", "C:\\o+t"}}, "x", "C:\\o t\\x.pdf"},
    {"escape_of_nothing_ends_the_path", {}, "a%zzb", "C:\\out\\a"},
    // Extension.
    {"own_extension", {{"DefaultExtension", ".prn"}}, "x", "C:\\out\\x.prn"},
    {"empty_extension_is_none", {{"DefaultExtension", ""}}, "x", "C:\\out\\x.pdf"},
    {"extension_of_19",
     {{"DefaultExtension", letters20.substr(0, 19)}},
     "x",
     "C:\\out\\x" + letters20.substr(0, 19)},
    {"extension_of_20_runs_on",
     {{"DefaultExtension", letters20}},
     "x",
     "C:\\out\\x" + letters20 + "C:\\out"},
    {"extension_of_39_is_cut",
     {{"DefaultExtension", letters20 + letters20.substr(1)}},
     "x",
     "C:\\out\\x" + letters20 + "C:\\out"},
    {"extension_of_40_is_none",
     {{"DefaultExtension", letters20 + letters20}},
     "x",
     "C:\\out\\x.pdf"},
    // Directory.
    {"separator_is_not_doubled", {{"DefaultSaveDir", "C:/out/"}}, "x", "C:/out/x.pdf"},
    {"directory_of_520_is_none", {{"DefaultSaveDir", dirOf519 + "d"}}, "x", "x.17.pdf"},
    {"directory_without_room", {}, "x", "C:\\.pdf", 7},
    // A name that comes to nothing eats into the directory.
    {"nothing_cuts_near_dot", {{"DefaultSaveDir", "C:\\a.bc"}}, "x-", "C:\\a.pdf"},
    {"nothing_leaves_far_dot", {{"DefaultSaveDir", "C:\\a.bcd"}}, "x- ", "C:\\a.bcd\\.pdf"},
    {"nothing_without_directory", {{"DefaultSaveDir", ""}}, "x-", ".17.pdf"},
    // Room.
    {"name_is_cut_to_the_room", {}, "abcdefgh", "C:\\out\\abcd.pdf", 16},
    {"no_room_for_extension",
     {{"DefaultSaveDir", dirOf519}, {"DefaultExtension", letters20}},
     "x",
     "C:\\" + std::string(256, 'd')},
    // Other rules.
    {"negative_action", {{"SaveFilenameAction", "4294967295"}}, "x", ""},
    {"action_6", {{"SaveFilenameAction", "6"}}, "x", ""},
    {"action_2", {{"SaveFilenameAction", "2"}}, "a-x", "C:\\out\\x.pdf"},
    {"action_3", {{"SaveFilenameAction", "3"}}, "a-x", "C:\\out\\x.pdf"},
    {"action_5", {{"SaveFilenameAction", "5"}}, "a-x", "C:\\out\\x.pdf"},
    {"action_1_takes_the_name_as_it_is",
     {{"SaveFilenameAction", "1"}, {"DefaultSaveFilename", "a-b:c.doc"}},
     "x",
     "C:\\out\\a-b:c.doc"},
    {"action_1_keeps_room_for_the_name",
     {{"SaveFilenameAction", "1"}, {"DefaultSaveFilename", "name"}},
     "x",
     "C:\\name",
     11},
    {"action_4_is_random", {{"SaveFilenameAction", "4"}}, "x", "C:\\out\\17.pdf"},
    {"random_without_room", {{"SaveFilenameAction", "4"}}, "x", "C:\\17.pdf", 13},
    {"random_with_room", {{"SaveFilenameAction", "4"}}, "x", "C:\\out\\17.pdf", 14},
    {"random_without_directory",
     {{"SaveFilenameAction", "4"}, {"DefaultSaveDir", ""}},
     "x",
     "17.18.pdf"},
    {"unnamed_document", {{"DefaultSaveFilename", "a-tmp.doc"}}, "", "C:\\out\\tmp.pdf"},
    {"no_name_at_all", {}, "", "C:\\out\\17.pdf"},
    {"default_name_of_520_is_none",
     {{"DefaultSaveFilename", std::string(520, 'n')}},
     "",
     "C:\\out\\17.pdf"},
};

class SetFilenameTable : public testing::TestWithParam<Case> {};

TEST_P(SetFilenameTable, NamesTheFile) {
  Naming naming(GetParam().settings);
  EXPECT_EQ(naming.name(GetParam().document, GetParam().size), GetParam().path);
  EXPECT_TRUE(naming.succeeded);
}

INSTANTIATE_TEST_SUITE_P(Namings, SetFilenameTable, testing::ValuesIn(namings),
                         [](const auto& test) { return test.param.name; });

TEST(SetFilename, MakesTheDirectoryButNotTheFile) {
  Naming naming({{"DefaultSaveDir", "C:\\new\\deep"}});
  EXPECT_EQ(naming.name("x"), "C:\\new\\deep\\x.pdf");
  EXPECT_TRUE(naming.files().isDirectory(u"C:\\new\\deep"));
  EXPECT_FALSE(naming.files().attributes(u"C:\\new\\deep\\x.pdf"));
}

TEST(SetFilename, WithoutADirectoryTheFileNameBecomesOne) {
  Naming naming({{"DefaultSaveDir", ""}});
  EXPECT_EQ(naming.name("x"), "x.17.pdf");
  EXPECT_TRUE(naming.files().isDirectory(u"x.pdf"));
  EXPECT_FALSE(naming.files().attributes(u"x.17.pdf"));
}

TEST(SetFilename, EachCollisionWorksOnTheLastDot) {
  Naming naming({{"DefaultExtension", ".prn"}});
  naming.files().addFile(u"C:\\out\\x.prn", "");
  naming.files().addFile(u"C:\\out\\x.17.pdf", "");
  EXPECT_EQ(naming.name("x"), "C:\\out\\x.17.18.pdf");
}

TEST(SetFilename, ACollisionKeepsToTheRoom) {
  Naming naming;
  naming.files().addFile(u"C:\\out\\abcd.pdf", "");
  EXPECT_EQ(naming.name("abcdefgh", 16), "C:\\out\\abcd.17.");
}

TEST(SetFilename, FailsOnACollisionWithoutADot) {
  Naming naming({{"SaveFilenameAction", "1"}});
  EXPECT_EQ(naming.name("x"), "C:\\out\\");
  EXPECT_FALSE(naming.succeeded);
  naming.set({{"DefaultSaveDir", "C:\\a.b"}});
  EXPECT_EQ(naming.name("x"), "C:\\a.17.pdf");
  EXPECT_TRUE(naming.succeeded);
}

TEST(SetFilename, GivesUpARandomNameAfterElevenTries) {
  Naming naming({{"SaveFilenameAction", "4"}});
  for (char16_t units = u'7'; units <= u'9'; ++units)
    naming.files().addFile(std::u16string(u"C:\\out\\1") + units + u".pdf", "");
  EXPECT_EQ(naming.name(""), "C:\\out\\20.pdf");
  for (char16_t units = u'0'; units <= u'9'; ++units)
    naming.files().addFile(std::u16string(u"C:\\out\\2") + units + u".pdf", "");
  naming.random().planned = {20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 21, 99};
  EXPECT_EQ(naming.name(""), "C:\\out\\21.99.pdf");
}

TEST(SetFilename, SeedsRandomNamesOnceAndCollisionsAlways) {
  Naming naming({{"SaveFilenameAction", "4"}});
  naming.simulated.machine.processes.threadId = 0x10001;
  naming.simulated.machine.clock.ticks = 0x20003;
  naming.name("");
  naming.name("");
  EXPECT_EQ(naming.random().seeds, std::vector<std::uint32_t>(3, 0x50003));
}

TEST(SetFilename, ReadsTheDefaultNameFromAFile) {
  const std::pair<const char*, const char*> contents[] = {
      {"n\xE4me.doc \t\r\nnext", "C:\\out\\n\xE4me.pdf"},
      {"", "C:\\out\\17.pdf"},
      {"\nx", "C:\\out\\17.pdf"}};
  for (const auto& [content, path] : contents) {
    Naming naming({{"DefaultSaveFilename", "@C:\\name.txt"}});
    naming.files().addFile(u"C:\\name.txt", content);
    EXPECT_EQ(naming.name(""), path);
  }
  Naming noFile({{"DefaultSaveFilename", "@C:\\name.txt"}});
  EXPECT_EQ(noFile.name(""), "C:\\out\\@C__name.pdf");
}

TEST(SetFilename, ReadsAtMost519CharactersFromAFile) {
  Naming naming({{"DefaultSaveFilename", "@C:\\name.txt"}, {"SaveFilenameAction", "1"}});
  naming.files().addFile(u"C:\\name.txt", std::string(600, 'n'));
  // The room that is left beside the name decides on the directory.
  EXPECT_EQ(naming.name("", 519 + 8).substr(0, 8), "C:\\out\\n");
  EXPECT_EQ(naming.name("", 519 + 7).substr(0, 4), "C:\\n");
}

TEST(SetFilename, KeepsTheNameOfALongPathAndItsExtension) {
  Naming naming({{"DefaultSaveDir", dirOf519}});
  EXPECT_EQ(naming.name("x.doc"), "C:\\x.pdf");
  naming.set({{"DefaultSaveDir", "C:\\out"}});
  EXPECT_EQ(naming.name(std::string(400, 'n')), "C:\\out\\" + std::string(248, 'n') + ".pdf");
}

}  // namespace
