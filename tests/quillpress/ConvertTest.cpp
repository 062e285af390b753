// The program as a user has it: what comes out, what it says, and how it ends.
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
const std::string failingPage = "%%Page: 3 3\n{nonesuch 0 0 moveto 3 3 lineto stroke} exec\n";

// An image too large for the content text, of one byte throughout.
std::string largeImage(char digit) {
  return "1 setgray 80 60 8 [1 0 0 1 0 0] {<" + std::string(9600, digit) + ">} image\n";
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
    for (const auto& entry : std::filesystem::directory_iterator(folder))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

  // Runs a line of shell in the folder; $Q is the program. `errors` is what it said.
  int shell(const std::string& line) {
    const std::string command = "cd '" + folder + "' && Q='" QUILLPRESS_PROGRAM "' && { " + line +
                                "; } 2>&1 >stdout </dev/null";
    FILE* pipe = ::popen(command.c_str(), "r");
    errors.clear();
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe))
      errors += static_cast<char>(byte);
    const int status = ::pclose(pipe);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  std::string contentOf(const std::string& postScript) {
    write("content.ps", postScript);
    EXPECT_EQ(shell("$Q convert --content content.ps content.txt"), 0);
    return read("content.txt");
  }
  std::vector<PdfPageView> pagesOf(const std::string& postScript, const std::string& options = "",
                                   int status = 0) {
    write("in.ps", postScript);
    EXPECT_EQ(shell("$Q convert " + options + " in.ps out.pdf"), status) << errors;
    return readPdf(pathOf("out.pdf"));
  }
  std::string folder, errors;
};

TEST_F(Convert, MakesAPageOfEachPageComment) {
  const auto pages = pagesOf("%!\n/x 1 def 9 9 moveto 8 8 lineto stroke\n" + firstPage +
                             secondPage + "%%Trailer\nnonesuch\n");
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
}

TEST_F(Convert, ReportsAFailingPageAndKeepsTheOthers) {
  const auto pages = pagesOf(firstPage + failingPage + secondPage, "", 1);
  EXPECT_EQ(
      errors,
      "quillpress: in.ps: page 2: Exception:[ameObject:25] NOTHING TO EXECUTE for nonesuch\n");
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_EQ(pages[0].content, firstText);
  EXPECT_EQ(pages[1].content, secondText) << "what the failing page still had to do was done";
}

TEST_F(Convert, ReportsAFailingPrologOnce) {
  EXPECT_EQ(pagesOf("nonesuch\n" + firstPage + failingPage + secondPage, "", 1).size(), 2u);
  EXPECT_THAT(errors, StartsWith("quillpress: in.ps: prolog: Exception:"));
  EXPECT_THAT(errors.substr(20), Not(HasSubstr("prolog")));
}

TEST_F(Convert, TellsOfAPageWithoutItsEndAndGoesOnAfterIt) {
  for (const std::string open : {"(text", "{1 2", "currentfile 4 string readhexstring 11 22",
                                 "currentfile 99 string readstring 11"}) {
    const auto pages = pagesOf(firstPage + open + "\n" + secondPage, "", 1);
    EXPECT_THAT(errors, HasSubstr("page 1: its end is missing")) << open;
    ASSERT_EQ(pages.size(), 2u) << open;
    EXPECT_EQ(pages[0].content, firstText) << open;
    EXPECT_EQ(pages[1].content, secondText) << open;
  }
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
  EXPECT_THAT(image.dictionary, HasSubstr("/Filter [ /ASCIIHexDecode ]"));
  EXPECT_EQ(image.data, std::string(9600, '5') + ">");
}

TEST_F(Convert, CompressesPlainImages) {
  const auto pages = pagesOf(
      "1 setgray 80 60 8 [1 0 0 1 0 0] {currentfile 4800 string readhexstring pop} image\n" +
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
  const auto plain = pagesOf(pattern).at(0);
  EXPECT_EQ(plain.content, "/Pattern cs\n/PA1 scn\n");
  ASSERT_EQ(plain.resources.size(), 1u);
  EXPECT_EQ(plain.resources[0].category, "/Pattern");
  EXPECT_THAT(plain.resources[0].dictionary, HasSubstr("/Matrix [ 1 0 0 1 5 6 ]"));
  // The surplus Q in it is balanced as a page's would be.
  EXPECT_EQ(plain.resources[0].data, "q\nq 10 0 0 20 0 0 cm\n0 0 m\n1 1 l\nS Q Q\n");

  const auto scaled = pagesOf(pattern, "--matrix 2,0,0,3,7,8").at(0);
  EXPECT_EQ(scaled.content, "2 0 0 3 7 8 cm\n/Pattern cs\n/PA1 scn\n");
  EXPECT_THAT(scaled.resources[0].dictionary, HasSubstr("/Matrix [ 2 0 0 3 17 26 ]"));
}

TEST_F(Convert, LeavesOutWhatIsNoPdf) {
  // Without a BBox the library's dictionary text has no value for its key.
  const auto pages = pagesOf(
      "/p 9 dict def p /XStep 1 put p /YStep 1 put p /PaintProc {pop} put "
      "p [1 0 0 1 0 0] makepattern /P exch def P setpattern\n",
      "", 1);
  EXPECT_THAT(errors, HasSubstr("page 1: /PA1 is missing"));
  EXPECT_THAT(pages.at(0).resources, IsEmpty());
}

TEST_F(Convert, WritesTheMatrixThatTheProgramTookForGranted) {
  const std::string program = "matrix defaultmatrix setmatrix\n";
  EXPECT_EQ(pagesOf(program, "--matrix -1,0,0,0.5,10,20")[0].content,
            "-1 0 0 0.5 10 20 cm\n1 0 0 1 0 0 cm\n");
  EXPECT_EQ(pagesOf(program)[0].content, "1 0 0 1 0 0 cm\n");
}

TEST_F(Convert, GivesSurplusRestoresTheStateOfThePagesStart) {
  EXPECT_EQ(pagesOf("gsave grestore grestore 5 setlinewidth grestore gsave\n")[0].content,
            "q\nq\nq Q Q 5 w Q q \nQ");
  // A Q in image data is none.
  EXPECT_EQ(pagesOf("1 setgray 2 2 8 [1 0 0 1 0 0] {( Q Q )} image\n")[0].content,
            "1 G 1 g q BI\n/W 2 /H 2 /BPC 8 /CS /G \nID\n Q Q \nEI\nQ\n");
}

TEST_F(Convert, GivesTheSameFileEachTime) {
  write("in.ps", firstPage + largeImage('5') + pattern);
  ASSERT_EQ(shell("$Q convert in.ps a.pdf && $Q convert - - <in.ps >b.pdf"), 0);
  EXPECT_EQ(read("a.pdf"), read("b.pdf"));
}

// What is said of a line, which leaves all files as they were.
TEST_F(Convert, SaysWhatIsWrongAndLeavesNothing) {
  const std::pair<const char*, const char*> misuses[] = {
      {"$Q", "--help"},
      {"$Q convert in.ps", "OUTPUT is required"},
      {"$Q convert --page-size B5 in.ps old.pdf", "A4, Letter or WIDTHxHEIGHT"},
      {"$Q convert --page-size 0x9 in.ps old.pdf", "not 0x9"},
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
      {"$Q convert in.ps /dev/full", "cannot write /dev/full: No space left on device"},
      {"$Q convert in.ps - >/dev/full", "standard output: No space left"},
      {"(trap '' XFSZ; ulimit -f 0; $Q convert in.ps old.pdf)",
       "cannot write old.pdf: File too large"},
  };
  write("in.ps", firstPage);
  write("bad.ps", failingPage);
  write("empty.ps", "");
  write("old.pdf", "old");
  for (const auto& [line, words] : misuses) {
    SCOPED_TRACE(line);
    EXPECT_EQ(shell(line), 2);
    EXPECT_THAT(errors, HasSubstr(words));
    EXPECT_EQ(read("old.pdf"), "old");
    EXPECT_EQ(read("in.ps"), firstPage);
    EXPECT_THAT(files(), ElementsAre("bad.ps", "empty.ps", "in.ps", "old.pdf", "stdout"));
  }
}

TEST_F(Convert, ReplacesTheOutputWholeAndKeepsItsMode) {
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
  int count = 0;
  for (const auto& sample : std::filesystem::directory_iterator(QUILLPRESS_SAMPLES)) {
    const std::string path = sample.path().string();
    if (path.ends_with("ps")) {
      ++count;
      EXPECT_EQ(shell("$Q convert '" + path + "' out.pdf && qpdf --check out.pdf >/dev/null"), 0)
          << path << ": " << errors;
    }
  }
  EXPECT_GE(count, 5);
}

}  // namespace
}  // namespace quillpress
