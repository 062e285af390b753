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
  for (const DscPage& page : document.pages()) parts.append("|").append(page.program);
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
      {"without page comments all is one page", "%!\n1 x\n%%Trailer\n2",
       "|%!\n1 x\n%%Trailer\n2\n"},
      {"without anything", "", "|\n"},
      {"pages end where the next begins", "%!\na\n%%Page: 1 1\nb\n%%Page: 2 2\nc",
       "%!\na\n|%%Page: 1 1\nb\n|%%Page: 2 2\nc\n"},
      {"the trailer is no page", "%%Page: 1 1\nb\n%%Trailer\nc\n", "|%%Page: 1 1\nb\n"},
      {"a trailer before a page is not the document's", "%%Page: 1\n%%Trailer\nb\n%%Page: 2\nc\n",
       "|%%Page: 1\n%%Trailer\nb\n|%%Page: 2\nc\n\n"},
      {"carriage returns end lines", "a\r%%Page: 1\rb\r\n%%Page: 2\r\nc\r%%Trailer\r",
       "a\r|%%Page: 1\rb\r\n|%%Page: 2\r\nc\r"},
      {"only whole keywords at line starts",
       "%%Pages: 2\n (%%Page: 1)\n%%PageTrailer\n%%Page layout\nx %%Page: 1\n",
       "|%%Pages: 2\n (%%Page: 1)\n%%PageTrailer\n%%Page layout\nx %%Page: 1\n\n"},
      {"embedded documents are passed over", "%%Page: 1\n" + embedded + "%%Page: 2\n",
       "|%%Page: 1\n" + embedded + "|%%Page: 2\n\n"},
      {"data are passed over by their count of bytes",
       "%%Page: 1\n%%BeginData: 23 Binary Bytes\n%%EndData\n%%Page: 7 7\n\n%%EndData\n%%Page: 2\n",
       "|%%Page: 1\n%%BeginData: 23 Binary Bytes\n%%EndData\n%%Page: 7 7\n\n%%EndData\n"
       "|%%Page: 2\n\n"},
      {"data are passed over by their count of lines",
       "%%BeginData: 2 ASCII Lines\n%%EndData\r\n%%Page: 7\r\n%%EndData\n%%Page: 1\n",
       "%%BeginData: 2 ASCII Lines\n%%EndData\r\n%%Page: 7\r\n%%EndData\n|%%Page: 1\n\n"},
      {"a wrong count gives way to the closing line",
       "%%BeginBinary: 99999999999\n%%Page: 7\n%%EndBinary\n%%Page: 1\n",
       "%%BeginBinary: 99999999999\n%%Page: 7\n%%EndBinary\n|%%Page: 1\n\n"},
      {"data that never close are none", "%%BeginData: 3\nx\n%%Page: 1\n",
       "%%BeginData: 3\nx\n|%%Page: 1\n\n"},
      {"end of transmission is stripped", "\4%!\nx\n\4\r\n\4", "|%!\nx\n\n"},
      {"printer commands are stripped",
       "\x1B%-12345X@PJL SET X\r\n@PJL ENTER LANGUAGE=POSTSCRIPT\r\n%!\nx\n\4\x1B%-12345X@PJL "
       "EOJ\r\n",
       "|%!\nx\n\n"},
      {"a DOS header is followed",
       "\xC5\xD0\xD3\xC6\x20\0\0\0\x05\0\0\0"s + std::string(20, 'h') + "%!\nx preview",
       "|%!\nx \n"}};
  for (const auto& [what, file, expected] : cases) EXPECT_EQ(split(file), expected) << what;
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
      {"no infinity", "%%BoundingBox: 0 0 inf 9\n", ""}};
  for (const auto& [what, file, expected] : cases) {
    const DscDocument document(file);
    std::ostringstream box;
    if (const auto found = document.pages().back().box)
      box << found->left << ' ' << found->bottom << ' ' << found->right << ' ' << found->top;
    EXPECT_EQ(box.str(), expected) << what;
  }
}

}  // namespace
}  // namespace quillpress
