// The program as a user has it: what comes out, what it says, and how it ends. Another command than
// the build's own program is tried when the environment's QUILLPRESS_PROGRAM names it, such as the
// program for Windows with Wine in front.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/quillpress/ReadPdf.h"

namespace quillpress {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// A line on a page of its own; the text of each is told from the others' by its numbers.
const std::string firstPage = "%%Page: 1 1\n0 0 moveto 1 1 lineto stroke\n";
const std::string secondPage = "%%Page: 2 2\n0 0 moveto 2 2 lineto stroke\n";
const std::string firstText = "0 0 m\n1 1 l\nS ";
const std::string secondText = "0 0 m\n2 2 l\nS ";
const std::string failingPage = "%%Page: 3 3\nnonesuch\n";

// An image too large for the content text, of one byte throughout.
std::string largeImage(char digit) {
  return "1 setgray 80 60 8 [80 0 0 -60 0 60] {<" + std::string(9600, digit) + ">} image\n";
}

// In a folder of its own that goes with the test.
class Convert : public testing::Test {
 protected:
  Convert() {
    std::string name = testing::TempDir() + "quillpress-XXXXXX";
    folder = ::mkdtemp(name.data()) == nullptr ? "" : name;
    EXPECT_NE(folder, "");
  }
  ~Convert() override { std::filesystem::remove_all(folder); }

  std::string pathOf(const std::string& name) const { return folder + "/" + name; }
  void write(const std::string& name, const std::string& bytes) const {
    std::ofstream(pathOf(name), std::ios::binary) << bytes;
  }
  std::string read(const std::string& name) const {
    std::ostringstream bytes;
    bytes << std::ifstream(pathOf(name), std::ios::binary).rdbuf();
    return bytes.str();
  }
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  // Runs a line of shell in the folder; $Q is the program. `errors` is what it said.
  int shell(const std::string& line) {
    const char* named = std::getenv("QUILLPRESS_PROGRAM");
    const std::string command = "cd '" + folder + "' && Q='" +
                                (named != nullptr ? named : QUILLPRESS_PROGRAM) + "' && { " + line +
                                "; } 2>&1 >stdout </dev/null";
    FILE* pipe = ::popen(command.c_str(), "r");
    errors.clear();
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe)) {
      if (byte != '\r') {  // Windows ends lines by two bytes
        errors += static_cast<char>(byte);
      }
    }
    const int status = ::pclose(pipe);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  std::string contentOf(const std::string& postScript) {
    write("content.ps", postScript);
    shell("$Q convert --content content.ps content.txt");
    return read("content.txt");
  }
  std::vector<PdfPageView> pagesOf(const std::string& postScript, const std::string& options = "",
                                   int status = 0) {
    write("in.ps", postScript);
    EXPECT_EQ(shell("$Q convert " + options + " in.ps out.pdf"), status) << errors;
    return readPdf(pathOf("out.pdf"));
  }
  // Lines, and what is said of each, which makes nothing and leaves all files as they were.
  void expectRefused(const std::vector<std::pair<const char*, const char*>>& lines) {
    write("in.ps", firstPage);
    write("bad.ps", failingPage);
    write("empty.ps", "");
    write("half.ps", firstPage + "(a) show\n");
    write("endless.ps", "{} loop");
    write("old.pdf", "old");
    for (const auto& [line, words] : lines) {
      SCOPED_TRACE(line);
      EXPECT_EQ(shell(line), 2);
      EXPECT_THAT(errors, HasSubstr(words));
      EXPECT_EQ(read("old.pdf"), "old");
      EXPECT_EQ(read("in.ps"), firstPage);
      EXPECT_THAT(files(), ElementsAre("bad.ps", "empty.ps", "endless.ps", "half.ps", "in.ps",
                                       "old.pdf", "stdout"));
    }
  }
  std::string folder, errors;
};

// What a program for Windows does otherwise, or Wine without a Windows around it.
using ConvertOnPosix = Convert;

TEST_F(Convert, MakesAPageOfEachPageComment) {
  const auto pages = pagesOf("%!\n/x 1 def 9 9 moveto 8 8 lineto stroke\n" + firstPage +
                                 secondPage + "%%Trailer\nnonesuch\n",
                             "", 3);
  EXPECT_THAT(errors, HasSubstr("Painted before the first page, and dropped: 1 path."));
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_EQ(pages[0].content, firstText);
  EXPECT_EQ(pages[1].content, secondText);
}

TEST_F(Convert, GivesTheContentAlone) {
  EXPECT_EQ(contentOf("0 0 moveto 1 1 lineto stroke"), firstText) << "nothing follows the token";
  EXPECT_EQ(contentOf("/d {currentlinewidth setlinewidth} def\n%%Page: 1\n5 setlinewidth d\n"
                      "%%Page: 2\nd\n"),
            "5 w 5 w 0 w ")
      << "definitions stay, the state is a fresh one";
}

TEST_F(Convert, ChoosesTheMediaBox) {
  const std::string boxed = "%%BoundingBox: 1 2 30 40\n" + firstPage;
  EXPECT_THAT(pagesOf(firstPage)[0].mediaBox, ElementsAre(0, 0, 612, 792));
  EXPECT_THAT(pagesOf(boxed)[0].mediaBox, ElementsAre(1, 2, 30, 40));
  EXPECT_THAT(pagesOf(boxed, "--page-size A4")[0].mediaBox, ElementsAre(0, 0, 595, 842));
  EXPECT_THAT(pagesOf(boxed, "--page-size 10x20.5")[0].mediaBox, ElementsAre(0, 0, 10, 20.5));
  EXPECT_THAT(pagesOf(boxed, "--page-size 100MMx2In")[0].mediaBox, ElementsAre(0, 0, 283.46, 144));
  EXPECT_THAT(pagesOf(boxed, "--page-size tabloid")[0].mediaBox, ElementsAre(0, 0, 792, 1224));
}

TEST_F(Convert, ReportsAFailingPageAndKeepsTheOthers) {
  const auto pages = pagesOf(firstPage + failingPage + secondPage, "", 3);
  EXPECT_EQ(errors,
            "quillpress: in.ps: page 2, line 4: \"nonesuch\" is no operator here, and nothing "
            "defines it: nonesuch [ameObject:25] NOTHING TO EXECUTE for nonesuch\n"
            "out.pdf: 2 pages; 2 paths. Left out: page 2.\n");
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_EQ(pages[0].content, firstText);
  EXPECT_EQ(pages[1].content, secondText) << "what the failing page still had to do was done";
}

TEST_F(Convert, GoesOnAfterFailuresLineByLine) {
  const auto page =
      pagesOf(
          "%!\n%%Page: 1\n<< /A 1 >> setpagedevice\n0 0 moveto (a\n b) pop 1 1 lineto stroke\n"
          "nonesuch 9 9 moveto\n{nonesuch 3 setlinewidth} exec\n0 0 moveto 2 2 lineto stroke\n"
          "nonesuch\n",
          "", 3)
          .at(0);
  EXPECT_EQ(page.content, firstText + "3 w " + secondText);
  EXPECT_THAT(errors, HasSubstr("line 3: the call of setpagedevice cannot be made; "));
  EXPECT_THAT(errors, HasSubstr("nothing defines it (3 times): nonesuch 9 9 moveto ["));
  EXPECT_THAT(errors, HasSubstr("1 page; 2 paths. Converted line by line, over failures: page 1."));
}

TEST_F(Convert, TakesOneCauseAndNotItsEchoes) {
  std::string lines;
  for (char c = 'a'; c <= 'l'; ++c) {
    lines += std::string(3, c) + " 5 pop\n1 0 0 sub sub sub\n";
  }
  pagesOf("%!\n" + lines + firstPage, "", 3);
  EXPECT_THAT(errors, HasSubstr("line 2: \"aaa\" is no operator"));
  EXPECT_THAT(errors, HasSubstr("and 2 more kinds of failure"));
  EXPECT_THAT(errors, HasSubstr("and 12 failures that may come of these"));
  EXPECT_THAT(errors, Not(HasSubstr("pop - expected")));
}

TEST_F(Convert, SaysWhetherAnUnknownNameIsDefinedElsewhere) {
  pagesOf(firstPage + "late 1 pop\n/latest 1 def\n/late {} def\nMyEncoding pop\n", "", 3);
  EXPECT_THAT(errors, HasSubstr("\"late\" is not defined when it is used; what defines it failed"));
  EXPECT_THAT(errors, HasSubstr("\"MyEncoding\" is no operator here"));
  EXPECT_THAT(errors, HasSubstr("text is not painted anyway"));
}

TEST_F(Convert, ReportsAFailingPrologOnce) {
  EXPECT_EQ(pagesOf("nonesuch\n/f {stroke} def\n" + firstPage + failingPage + secondPage +
                        "%%Page: 4 4\n0 0 moveto 3 3 lineto f\n",
                    "", 3)
                .size(),
            3u);
  EXPECT_THAT(errors, StartsWith("quillpress: in.ps: prolog, line 1: \"nonesuch\""));
  EXPECT_THAT(errors.substr(20), Not(HasSubstr("prolog")));
  EXPECT_THAT(errors, Not(HasSubstr("\"f\""))) << "what follows the failure is defined";
}

TEST_F(Convert, TellsOfAPageWithoutItsEndAndGoesOnAfterIt) {
  for (const std::string open : {"(text", "{1 2", "currentfile 4 string readhexstring 11 22",
                                 "currentfile 99 string readstring 11"}) {
    const auto pages = pagesOf(firstPage + open + "\n" + secondPage, "", 3);
    EXPECT_THAT(errors, HasSubstr("page 1, line 3: its end is missing")) << open;
    ASSERT_EQ(pages.size(), 2u) << open;
    EXPECT_EQ(pages[0].content, firstText) << open;
    EXPECT_EQ(pages[1].content, secondText) << open;
  }
}

// A program, and what is said of it besides the marks.
TEST_F(Convert, SaysWhatIsLost) {
  const std::pair<std::string, const char*> cases[] = {
      {"(Hello) show (a) show",
       "1 page; nothing painted. Not painted: 2 strings of text. Blank: page 1."},
      {"0 0 9 9 rectfill", "Not painted: 1 rectangle (rectfill)."},
      {"0.3 truncate pop", "Not computed, so that sizes may differ: 1 use of truncate."},
      {"{1 exch sub} settransfer", "Not painted: 1 transfer function (settransfer)."},
      {"5 dict setpagedevice", "Not followed: 1 use of setpagedevice."},
      {"1 1 8 [1 0 0 -1 0 1] {(a)} {(b)} {(c)} true 3 colorimage",
       "1 image with the colours in another order"},
      {"0 setgray 1 1 8 [1 0 0 1 0 0] {(a)} image", "1 image not where the image's own matrix"},
      {"0 0 moveto 9 0 lineto 9 9 lineto gsave 0 setgray fill grestore stroke",
       "Missing: 1 outline (gsave fill grestore stroke leaves no path for the stroke)."},
      {"800 0 moveto 900 0 lineto stroke", "1 path. 1 of these lies outside of the page."},
      {"0 0 moveto 700 900 lineto stroke", "cut: it is painted up to 700x900 points"}};
  for (const auto& [program, words] : cases) {
    const bool isSetup = program.ends_with("setpagedevice");
    write("in.ps", isSetup ? firstPage + program : program);
    EXPECT_EQ(shell("$Q in.ps"), isSetup ? 0 : 3) << program;
    EXPECT_THAT(errors, HasSubstr(words)) << program;
    EXPECT_EQ(readPdf(pathOf("in.pdf")).size(), 1u);
  }
}

TEST_F(Convert, MakesPagesOfShowpage) {
  const auto pages = pagesOf(
      "0 0 moveto 1 1 lineto stroke gsave showpage\n0 0 moveto 2 2 lineto stroke grestore "
      "showpage\n"
      "grestore");
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_EQ(pages[0].content, firstText + "q \nQ");
  EXPECT_EQ(pages[1].content, "q\nq\n" + secondText + "Q Q ");
  EXPECT_THAT(errors, HasSubstr("2 pages; 2 paths."));
  EXPECT_EQ(pagesOf("showpage " + firstPage.substr(12) + "showpage\n(a) show", "", 3).size(), 2u);
}

TEST_F(Convert, StoresAnImageOnce) {
  const auto pages = pagesOf("%!\n%%Page: 1\n" + largeImage('5') + largeImage('5') + "%%Page: 2\n" +
                             largeImage('6') + largeImage('5'));
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_EQ(pages[0].content, "1 G 1 g /PSI1 Do\n1 G 1 g /PSI1 Do\n");
  ASSERT_EQ(pages[0].resources.size(), 1u);
  ASSERT_EQ(pages[1].resources.size(), 2u);
  const PdfResource& image = pages[0].resources[0];
  EXPECT_EQ(image.category, "/XObject");
  EXPECT_EQ(image.name, "/PSI1");
  EXPECT_EQ(image.object, pages[1].resources[0].object);
  EXPECT_THAT(image.dictionary, HasSubstr("/ColorSpace /DeviceGray"));
  EXPECT_THAT(image.dictionary, HasSubstr("/Filter /FlateDecode"));
  EXPECT_EQ(image.data, std::string(4800, 'U')) << "digits are decoded on the way";
}

TEST_F(Convert, CompressesPlainImages) {
  const auto pages = pagesOf(
      "1 setgray 80 60 8 [80 0 0 -60 0 60] {currentfile 4800 string readhexstring pop} image\n" +
      std::string(9600, '5') + "\nstroke\n");
  ASSERT_EQ(pages.at(0).resources.size(), 1u);
  EXPECT_THAT(pages[0].resources[0].dictionary, HasSubstr("/Filter /FlateDecode"));
  EXPECT_EQ(pages[0].resources[0].data, std::string(4800, 'U'));
}

const std::string pattern =
    "/p 9 dict def p /PatternType 1 put p /PaintType 1 put p /TilingType 1 put "
    "p /XStep 10 put p /YStep 20 put p /BBox [0 0 10 20] put "
    "p /PaintProc {pop 0 0 moveto 1 1 lineto stroke grestore} put "
    "p [1 0 0 1 5 6] makepattern /P exch def P setpattern\n";

TEST_F(Convert, PlacesPatternsWithTheirMatrix) {
  const auto plain = pagesOf(pattern, "", 3).at(0);
  EXPECT_EQ(plain.content, "/Pattern cs\n/PA1 scn\n");
  ASSERT_EQ(plain.resources.size(), 1u);
  EXPECT_EQ(plain.resources[0].category, "/Pattern");
  EXPECT_THAT(plain.resources[0].dictionary, HasSubstr("/Matrix [ 1 0 0 1 5 6 ]"));
  // The surplus Q in it is balanced as a page's would be.
  EXPECT_EQ(plain.resources[0].data, "q\nq 10 0 0 20 0 0 cm\n0 0 m\n1 1 l\nS Q Q\n");

  const auto scaled = pagesOf(pattern, "--matrix 2,0,0,3,7,8", 3).at(0);
  EXPECT_EQ(scaled.content, "2 0 0 3 7 8 cm\n/Pattern cs\n/PA1 scn\n");
  EXPECT_THAT(scaled.resources[0].dictionary, HasSubstr("/Matrix [ 2 0 0 3 17 26 ]"));
}

TEST_F(Convert, LeavesOutWhatIsNoPdf) {
  // Without a BBox the library's dictionary text has no value for its key.
  const auto pages = pagesOf(
      "/p 9 dict def p /XStep 1 put p /YStep 1 put p /PaintProc {pop} put "
      "p [1 0 0 1 0 0] makepattern /P exch def P setpattern\n",
      "", 3);
  EXPECT_THAT(errors, HasSubstr("No valid PDF, and left out: /PA1."));
  EXPECT_THAT(pages.at(0).resources, IsEmpty());
}

TEST_F(Convert, WritesTheMatrixThatTheProgramTookForGranted) {
  const std::string program = "matrix defaultmatrix setmatrix\n";
  EXPECT_EQ(pagesOf(program, "--matrix -1,0,0,0.5,10,20", 3)[0].content,
            "-1 0 0 0.5 10 20 cm\n1 0 0 1 0 0 cm\n");
  EXPECT_EQ(pagesOf(program, "", 3)[0].content, "1 0 0 1 0 0 cm\n");
}

TEST_F(Convert, GivesSurplusRestoresTheStateOfThePagesStart) {
  EXPECT_EQ(pagesOf("gsave grestore grestore 5 setlinewidth grestore gsave\n", "", 3)[0].content,
            "q\nq\nq Q Q 5 w Q q \nQ");
  // A Q in image data is none.
  EXPECT_EQ(pagesOf("1 setgray 2 2 8 [2 0 0 -2 0 2] {( Q Q )} image\n")[0].content,
            "1 G 1 g q BI\n/W 2 /H 2 /BPC 8 /CS /G \nID\n Q Q \nEI\nQ\n");
}

TEST_F(Convert, GivesTheSameFileEachTime) {
  write("in.ps", firstPage + largeImage('5') + pattern);
  ASSERT_EQ(shell("$Q convert in.ps a.pdf && $Q convert - - <in.ps >b.pdf"), 0);
  EXPECT_EQ(read("a.pdf"), read("b.pdf"));
}

TEST_F(Convert, SaysWhatIsWrongAndLeavesNothing) {
  expectRefused({
      {"$Q", "--help"},
      {"$Q convert", "give an INPUT file"},
      {"$Q convrt in.ps old.pdf", "is convert meant?"},
      {"$Q --page-sise A4 in.ps old.pdf", "no option --page-sise; is --page-size meant?"},
      {"$Q convert --page-size B9 in.ps old.pdf", "letter, legal"},
      {"$Q convert --page-size 0x9 in.ps old.pdf", "not 0x9"},
      {"$Q convert --page-size 1e9x1e9 in.ps old.pdf", "at most 14400 points"},
      {"$Q convert --time-limit -1 in.ps old.pdf", "0 for no limit; not -1"},
      {"$Q objects in.ps", "give the folder for the objects"},
      {"$Q name --set =x Title", "give KEY=VALUE, not =x"},
      {"$Q in.ps in.ps", "INPUT and OUTPUT are both in.ps"},
      {"$Q in.ps bad.ps", "for several inputs give --output-dir"},
      {"$Q in.ps bad.ps old.pdf", "for several inputs give --output-dir"},
      {"$Q --strict half.ps old.pdf", "half.ps would not come out whole; nothing was written"},
      {"$Q --time-limit 0.1 endless.ps old.pdf", "more than 0.1 s of processor time"},
      {"printf '\\211PNG' | $Q - old.pdf", "standard input is a PNG image"},
      {"head -c 3000 /dev/zero | tr '\\0' '\\201' | $Q - old.pdf", "no PostScript"},
      {"printf '\\037\\213\\010' | $Q - old.pdf", "compressed data are damaged"},
      {"$Q convert --matrix 1,0,0,1,0 in.ps old.pdf", "six numbers"},
      {"$Q convert --matrix 1,0,0,1,0,0,0 in.ps old.pdf", "six numbers"},
      {"$Q convert --matrix 1,1,1,1,0,0 in.ps old.pdf", "not 0"},
      {"$Q convert none.ps old.pdf", "cannot read none.ps: No such file or directory"},
      {"$Q convert . old.pdf", "Is a directory; give the name of a file"},
      {"$Q convert empty.ps old.pdf", "empty.ps is empty"},
      {"printf %s-1.4 %PDF | $Q convert - old.pdf", "standard input is a PDF file"},
      {"$Q convert in.ps ./in.ps", "INPUT and OUTPUT are both"},
      {"$Q convert bad.ps old.pdf", "no page of bad.ps could be converted"},
      {"$Q convert in.ps .", "cannot write .: Is a directory"},
      {"$Q convert in.ps none/out.pdf", "check the path"},
  });
}

TEST_F(ConvertOnPosix, SaysWhatFailedAndLeavesNothing) {
  expectRefused({
      {"(sleep 9 | $Q - old.pdf) & sleep 0.2; kill -TERM $!; wait $! || exit 2", ""},
      {"$Q convert in.ps /dev/full", "cannot write /dev/full: No space left on device"},
      {"$Q convert in.ps - >/dev/full", "standard output: No space left"},
      {"(trap '' XFSZ; ulimit -f 0; $Q convert in.ps old.pdf)",
       "cannot write old.pdf: File too large"},
  });
}

TEST_F(ConvertOnPosix, ReplacesTheOutputWholeAndKeepsItsMode) {
  write("in.ps", firstPage);
  write("out.pdf", "old");
  ASSERT_EQ(shell("chmod 640 out.pdf && ln -s out.pdf link && $Q convert in.ps link"), 0);
  EXPECT_TRUE(std::filesystem::is_symlink(pathOf("link")));
  EXPECT_EQ(readPdf(pathOf("out.pdf")).size(), 1u);
  EXPECT_EQ(static_cast<int>(std::filesystem::status(pathOf("out.pdf")).permissions()), 0640);
  EXPECT_THAT(files(), ElementsAre("in.ps", "link", "out.pdf", "stdout"));
}

TEST_F(Convert, HelpsAndTellsItsVersion) {
  EXPECT_EQ(shell("$Q --version"), 0);
  EXPECT_THAT(read("stdout"), StartsWith("quillpress "));
  EXPECT_EQ(shell("$Q convert --help"), 0);
  EXPECT_THAT(read("stdout"), HasSubstr("--page-size"));
}

TEST_F(Convert, AllSamplesGiveSoundFiles) {
  constexpr const char* losing[] = {"driver-report.ps", "text-only.ps", "two-showpages.ps",
                                    "dictionary-marks.ps", "endless-loop.ps"};
  int count = 0;
  for (const auto& sample : std::filesystem::directory_iterator(QUILLPRESS_SAMPLES)) {
    const std::string path = sample.path().string();
    if (path.ends_with("ps")) {
      ++count;
      const bool loses = std::any_of(std::begin(losing), std::end(losing),
                                     [&](const char* name) { return path.ends_with(name); });
      EXPECT_EQ(shell("$Q convert --time-limit 0.5 '" + path + "' out.pdf"), loses ? 3 : 0)
          << path << errors;
      EXPECT_EQ(shell("qpdf --check out.pdf >stdout"), 0) << path;
    }
  }
  EXPECT_GE(count, 9);
}

TEST_F(Convert, ReportsToProgramsAsTheSchemaSays) {
  write("a.ps", "%!PS\n%%Title: x\n/f {\xE9} def\n%%Page: \"i\" 1\n(\\(\xE9) show f\n" +
                    largeImage('5') + "{1} {2} {3} true 3 colorimage\n" + secondPage);
  write("b.ps", "{} loop");
  EXPECT_EQ(shell("$Q check --time-limit 0.1 --json r.json a.ps b.ps none.ps"), 3);
  EXPECT_EQ(shell("'" QUILLPRESS_TESTS "/quillpress/check-report' '" QUILLPRESS_TESTS
                  "/../docs/report.schema.json' r.json"),
            0)
      << read("stdout");
  EXPECT_THAT(read("r.json"), HasSubstr("\"cause\":\"time-limit\""));
  EXPECT_THAT(read("r.json"), HasSubstr("\"operator\":\"show\",\n\"class\":\"text\",\n"
                                        "\"count\":1,\n\"line\":5"));
  EXPECT_THAT(read("r.json"), HasSubstr("No such file or directory"));
}

TEST_F(Convert, ChecksWithoutWriting) {
  write("good.ps", firstPage);
  write("text.ps", "(a) show");
  EXPECT_EQ(shell("$Q check good.ps text.ps bad.ps"), 3);
  EXPECT_EQ(read("stdout").substr(0, 98),
            "good.ps: will come out whole: 1 page; 1 path.\n"
            "text.ps: will not come out whole: 1 page; nothing pa");
  EXPECT_THAT(read("stdout"), HasSubstr("bad.ps: nothing can be made of it: cannot read bad.ps"));
  EXPECT_THAT(files(), ElementsAre("good.ps", "stdout", "text.ps"));
}

TEST_F(Convert, TakesSeveralInputsAndGoesOnAfterOneThatFails) {
  write("a.ps", firstPage);
  write("b.eps", secondPage);
  EXPECT_EQ(
      shell("mkdir \xC3\xB6; mv a.ps \xC3\xA4.ps; $Q --output-dir \xC3\xB6 none.ps \xC3\xA4.ps "
            "b.eps; [ $? = 3 ] && ls \xC3\xB6"),
      0);
  EXPECT_EQ(read("stdout"), "b.pdf\n\xC3\xA4.pdf\n");
  EXPECT_EQ(shell("gzip b.eps; $Q --quiet b.eps.gz c.pdf"), 0);
  EXPECT_EQ(errors, "");
  EXPECT_EQ(readPdf(pathOf("c.pdf")).at(0).content, secondText);
}

// Programs that would take all memory or time, each within its limit.
TEST_F(Convert, KeepsItsLimits) {
  const std::pair<const char*, const char*> cases[] = {
      {"{} loop", "more than 0.5 s of processor time; give more with --time-limit"},
      {"/f {f} def f", "more than"},
      {"{0 0 moveto 9 9 lineto stroke} loop", "more than"},
      {"{1000000 array} loop", "more than"},
      {"(aaaaaaaa) {dup length 2 mul string dup 0 3 index putinterval} loop", "more than"},
      {"%%Page: 1\n{} loop", "more than"},
      {"{} loop\n%%Page: 1\n", "what comes before the first page does not end: it took more"}};
  for (const auto& [program, words] : cases) {
    write("in.ps", program);
    EXPECT_EQ(shell("$Q --time-limit 0.5 --memory-limit 200 in.ps out.pdf"), 2) << program;
    EXPECT_THAT(errors, HasSubstr(words)) << program;
    EXPECT_THAT(files(), ElementsAre("in.ps", "stdout"));
  }
}

TEST_F(Convert, ShowsWhatProgrammersAskFor) {
  EXPECT_EQ(shell("$Q operators show truncate dup"), 0);
  EXPECT_THAT(read("stdout"), HasSubstr("does nothing: text is not painted\n"));
  EXPECT_THAT(read("stdout"), HasSubstr("answers a fixed value\n"));
  EXPECT_THAT(read("stdout"), EndsWith(" works\n"));
  EXPECT_EQ(shell("$Q operators nonesuch"), 2);
  EXPECT_EQ(shell("$Q name 'Editor - R\xC3\xA9port.doc' --set 'DefaultSaveDir=C:\\Out'"), 0);
  EXPECT_EQ(read("stdout"), "C:\\Out\\R\xC3\xA9port.pdf\n");
  EXPECT_EQ(shell("$Q name a --set 'DefaultSaveDir=C:\\Out' --existing 'C:\\Out\\a.pdf'"), 0);
  EXPECT_THAT(read("stdout"), StartsWith("C:\\Out\\a."));
  EXPECT_EQ(shell("$Q xmp 'A <plan>' --set DocInfoSubject=tests"), 0);
  EXPECT_THAT(read("stdout"), HasSubstr("A &lt;plan&gt;"));
  EXPECT_THAT(read("stdout"), HasSubstr("tests"));
  write("in.ps", largeImage('5'));
  EXPECT_EQ(shell("$Q objects --to o in.ps && ls o && cat o/PSI1.dictionary"), 0);
  EXPECT_THAT(read("stdout"), StartsWith("PSI1.data\nPSI1.dictionary\n/Type /XObject"));
  EXPECT_EQ(shell("$Q content in.ps"), 0);
  EXPECT_EQ(read("stdout"), "1 G 1 g /PSI1 Do\n");
}

TEST_F(Convert, TellsTheDocumentsTitle) {
  write("in.ps", "%!PS\n%%Title: (A plan)\n%%For: J\xF6rg\n" + firstPage);
  EXPECT_EQ(
      shell("SOURCE_DATE_EPOCH=0 $Q --author Pat in.ps a.pdf; $Q in.ps b.pdf; qpdf --qdf b.pdf -"),
      0);
  EXPECT_THAT(read("stdout"), HasSubstr("/Title (A plan)"));
  EXPECT_THAT(read("stdout"), HasSubstr("/Author <4af67267>"));
  EXPECT_THAT(read("stdout"), Not(HasSubstr("Date")));
  EXPECT_THAT(read("a.pdf"), HasSubstr("/CreationDate (D:19700101000000Z)"));
  EXPECT_THAT(read("a.pdf"), HasSubstr("/Author (Pat)"));
}

TEST_F(Convert, KeepsControlBytesOffTheTerminal) {
  write("in.ps", "%!PS\n\x9B\x31m\x07 pop\n");
  shell("$Q in.ps");
  EXPECT_THAT(errors, HasSubstr("NOTHING TO EXECUTE for \\x9B1m\\x07"));
  EXPECT_THAT(errors, Not(HasSubstr("\x9B")));
}

// Cut anywhere, in another line end, with bytes of any kind: a word, a status, nothing left behind.
TEST_F(Convert, BearsAnyBytes) {
  const std::string program = "%!PS\n%%Page: 1 1\n/f {(a\\)b) pop <41> pop} def f\n" +
                              firstPage.substr(12) + "[1 2] 0 setdash f showpage\n";
  std::vector<std::string> inputs{std::string("%!\0\0(\0", 6),
                                  "%!\r0 0 moveto\r1 1 lineto stroke\r",
                                  "%!PS\n\x80\x84\xFE\xFF{{{[[[", "%!", "%%Page:\n%%Page:"};
  for (size_t length = 1; length < program.size(); length += 3) {
    inputs.push_back(program.substr(0, length));
  }
  for (const std::string& input : inputs) {
    write("in.ps", input);
    EXPECT_THAT(shell("$Q in.ps out.pdf"), testing::AnyOf(0, 2, 3)) << input << errors;
    EXPECT_NE(errors, "");
  }
}

}  // namespace
}  // namespace quillpress
