// Where a document's pages begin and end, and which boxes count.
#include "tools/quillpress/DscDocument.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>

namespace quillpress {
namespace {

using std::string_literals::operator""s;

// A document's prolog and its pages' programs, with | between them.
std::string split(const std::string& file) {
  const DscDocument document(file);
  std::string parts(document.prolog());
  for (const DscPage& page : document.pages()) {
    parts.append("|").append(page.program);
  }
  return parts;
}

// An embedded document whose page comments are its own, also when one is embedded in it.
const std::string embedded =
    "%%BeginDocument: a\n%%Page: 9 9\n%%BeginDocument: b\n%%EndDocument\n%%Page: 8 8\n"
    "%%Trailer\n%%EndDocument\n";

struct Case {
  const char* what;
  std::string file, expected;
};

TEST(DscDocument, IsSplitIntoPrologAndPages) {
  const Case cases[] = {
      {"without page comments all is one page", "%!\n1 x\n%%Trailer\n2", "|%!\n1 x\n%%Trailer\n2"},
      {"without anything", "", "|"},
      {"pages end where the next begins", "%!\na\n%%Page: 1 1\nb\n%%Page: 2 2\nc",
       "%!\na\n|%%Page: 1 1\nb\n|%%Page: 2 2\nc"},
      {"the trailer is no page", "%%Page: 1 1\nb\n%%Trailer\nc\n", "|%%Page: 1 1\nb\n"},
      {"a trailer before a page is not the document's", "%%Page: 1\n%%Trailer\nb\n%%Page: 2\nc\n",
       "|%%Page: 1\n%%Trailer\nb\n|%%Page: 2\nc\n"},
      {"carriage returns end lines", "a\r%%Page: 1\rb\r\n%%Page: 2\r\nc\r%%Trailer\r",
       "a\r|%%Page: 1\rb\r\n|%%Page: 2\r\nc\r"},
      {"only whole keywords at line starts",
       "%%Pages: 2\n (%%Page: 1)\n%%PageTrailer\n%%Page layout\nx %%Page: 1\n",
       "|%%Pages: 2\n (%%Page: 1)\n%%PageTrailer\n%%Page layout\nx %%Page: 1\n"},
      {"embedded documents are passed over", "%%Page: 1\n" + embedded + "%%Page: 2\n",
       "|%%Page: 1\n" + embedded + "|%%Page: 2\n"},
      {"data are passed over by their count of bytes",
       "%%Page: 1\n%%BeginData: 23 Binary Bytes\n%%EndData\n%%Page: 7 7\n\n%%EndData\n%%Page: 2\n",
       "|%%Page: 1\n%%BeginData: 23 Binary Bytes\n%%EndData\n%%Page: 7 7\n\n%%EndData\n"
       "|%%Page: 2\n"},
      {"data are passed over by their count of lines",
       "%%BeginData: 2 ASCII Lines\n%%EndData\r\n%%Page: 7\r\n%%EndData\n%%Page: 1\n",
       "%%BeginData: 2 ASCII Lines\n%%EndData\r\n%%Page: 7\r\n%%EndData\n|%%Page: 1\n"},
      {"a wrong count gives way to the closing line",
       "%%BeginBinary: 99999999999\n%%Page: 7\n%%EndBinary\n%%Page: 1\n",
       "%%BeginBinary: 99999999999\n%%Page: 7\n%%EndBinary\n|%%Page: 1\n"},
      {"data that never close are none", "%%BeginData: 3\nx\n%%Page: 1\n",
       "%%BeginData: 3\nx\n|%%Page: 1\n"},
      {"end of transmission is stripped", "\4%!\nx\n\4\r\n\4", "|%!\nx\n"},
      {"printer commands are stripped",
       "\x1B%-12345X@PJL SET X\r\n@PJL ENTER LANGUAGE=POSTSCRIPT\r\n%!\nx\n\4\x1B%-12345X@PJL "
       "EOJ\r\n",
       "|%!\nx\n"},
      {"a DOS header is followed",
       "\xC5\xD0\xD3\xC6\x20\0\0\0\x05\0\0\0"s + std::string(20, 'h') + "%!\nx preview",
       "|%!\nx "}};
  for (const auto& [what, file, expected] : cases) {
    EXPECT_EQ(split(file), expected) << what;
  }
}

TEST(DscDocument, RefusesADosHeaderThatPointsOutside) {
  EXPECT_THROW(DscDocument("\xC5\xD0\xD3\xC6\x20\0\0\0\xFF\xFF\xFF\xFF"s + std::string(40, 'h')),
               std::invalid_argument);
}

// The box of the last page counts.
TEST(DscDocument, GivesThePagesBox) {
  const Case cases[] = {
      {"none", "%%Page: 1\n", ""},
      {"the document's", "%%BoundingBox: -1 2 30 40.5\n%%Page: 1\n", "-1 2 30 40.5"},
      {"the first one", "%%BoundingBox: 0 0 1 1\n%%BoundingBox: 0 0 2 2\n", "0 0 1 1"},
      {"at the end",
       "%%BoundingBox: (atend)\n%%Page: 1\n%%BoundingBox: 0 0 9 9\n%%Trailer\n"
       "%%BoundingBox: 0 0 3 3\n",
       "0 0 3 3"},
      {"the page's own", "%%BoundingBox: 0 0 1 1\n%%Page: 1\n%%PageBoundingBox:0 0 2 2\n",
       "0 0 2 2"},
      {"the page's own at its end",
       "%%Page: 1\n%%PageBoundingBox: (atend)\n%%PageTrailer\n%%PageBoundingBox: 0 0 4 4\n"
       "%%Trailer\n",
       "0 0 4 4"},
      {"not that of another page", "%%Page: 1\n%%PageBoundingBox: 0 0 2 2\n%%Page: 2\n", ""},
      {"the default of all pages",
       "%%BoundingBox: 0 0 1 1\n%%PageBoundingBox: 0 0 5 5\n%%Page: 1\n", "0 0 5 5"},
      {"not that of an embedded document",
       "%%Page: 1\n%%BeginDocument: x\n%%PageBoundingBox: 0 0 5 5\n%%EndDocument\n", ""},
      {"no empty box", "%%BoundingBox: 0 0 0 0\n", ""},
      {"no words", "%%BoundingBox: 0 0 a b\n", ""},
      {"no infinity", "%%BoundingBox: 0 0 inf 9\n", ""},
      {"none too large", "%%BoundingBox: 0 0 1e9 9\n", ""},
      {"the exact one of a picture",
       "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 3 3\n%%HiResBoundingBox: 0.5 0 2.5 3\n"
       "%%DocumentMedia: A4 595 842 0 () ()\n",
       "0.5 0 2.5 3"},
      {"a document's medium",
       "%!PS-Adobe-3.0\n%%BoundingBox: 9 9 20 20\n%%DocumentMedia: x 100 200 0 () ()\n%%Page: 1\n",
       "0 0 100 200"},
      {"the page's medium, of several",
       "%%DocumentMedia: x 100 200 0 () ()\n%%+ y 300 400 0 () ()\n%%Page: 1\n%%PageMedia: y\n",
       "0 0 300 400"},
      {"paper by its name", "%%DocumentPaperSizes: a4\n%%BoundingBox: 0 0 9 9\n", "0 0 595 842"},
      {"a feature", "%%BeginFeature: *PageSize Letter\n%%EndFeature\n%%Page: 1\n", "0 0 612 792"},
      {"set-up by the program", "<</Duplex true /PageSize [ 420 595 ]>> setpagedevice\n%%Page: 1\n",
       "0 0 420 595"},
      {"the page's set-up before the document's",
       "<</PageSize [1 2]>> setpagedevice\n%%Page: 1\n<</PageSize [3 4]>>setpagedevice\n",
       "0 0 3 4"},
      {"no procedure's set-up", "/a {<</PageSize [1 2]>> setpagedevice} def\n", ""}};
  for (const auto& [what, file, expected] : cases) {
    const DscDocument document(file);
    std::ostringstream box;
    if (const auto found = document.pages().back().box) {
      box << found->left << ' ' << found->bottom << ' ' << found->right << ' ' << found->top;
    }
    EXPECT_EQ(box.str(), expected) << what;
  }
}

TEST(DscDocument, GivesThePagesRotation) {
  const std::pair<const char*, int> cases[] = {
      {"%%Orientation: Landscape\n%%Page: 1\n", 90},
      {"%%Orientation: Landscape\n%%Page: 1\n%%PageOrientation: Portrait\n", 0},
      {"%%Page: 1\n%%ViewingOrientation: 0 -1 1 0\n", 270},
      {"%%Page: 1\n%%ViewingOrientation: -1 0 0 -1\n", 180},
      {"%%Orientation: (atend)\n%%Page: 1\n%%Trailer\n%%Orientation: Landscape\n", 90},
      {"%%Page: 1\n%%PageOrientation: Seascape\n", 270},
      {"%%Page: 1\n%%ViewingOrientation: 0 1 -1\n", 0},
      {"%%Orientation: sideways\n", 0}};
  for (const auto& [file, rotation] : cases) {
    EXPECT_EQ(DscDocument(file).pages().back().rotation, rotation) << file;
  }
}

TEST(DscDocument, ReadsTheHeader) {
  const DscDocument document(
      "%!PS\n%%Title: (A plan)\n%%Creator: by hand\n%%For: Pat\n%%Title: no\n%%EndComments\n"
      "%%Page: ii 2\n%%Title: none of the document\n");
  EXPECT_EQ(document.info().title, "A plan");
  EXPECT_EQ(document.info().creator, "by hand");
  EXPECT_EQ(document.info().author, "Pat");
  EXPECT_EQ(document.pages()[0].label, "ii");
}

}  // namespace
}  // namespace quillpress
