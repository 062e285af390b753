// Where a document's pages begin and end, and which boxes count.
#include "tools/quillpress/DscDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace quillpress {
namespace {

using std::string_literals::operator""s;

struct SplitCase {
  const char* name;
  std::string file;
  std::string prolog;
  std::vector<std::string> pages;
};

class Split : public testing::TestWithParam<SplitCase> {};

TEST_P(Split, GivesProlog_AndPages) {
  const DscDocument document(GetParam().file);
  std::vector<std::string> programs;
  for (const DscPage& page : document.pages()) {
    programs.emplace_back(page.program);
  }
  EXPECT_EQ(document.prolog(), GetParam().prolog);
  EXPECT_EQ(programs, GetParam().pages);
}

// An embedded document whose page comments are its own, also when one is embedded in it.
const std::string embedded =
    "%%BeginDocument: a\n%%Page: 9 9\n%%BeginDocument: b\n%%EndDocument\n%%Page: 8 8\n"
    "%%Trailer\n%%EndDocument\n";

const std::vector<SplitCase> splitCases = {
    {"without_page_comments_all_is_one_page",
     "%!\n1 x\n%%Trailer\n2",
     "",
     {"%!\n1 x\n%%Trailer\n2\n"}},
    {"without_anything", "", "", {"\n"}},
    {"pages_end_where_the_next_begins",
     "%!\na\n%%Page: 1 1\nb\n%%Page: 2 2\nc",
     "%!\na\n",
     {"%%Page: 1 1\nb\n", "%%Page: 2 2\nc\n"}},
    {"the_trailer_is_no_page", "%%Page: 1 1\nb\n%%Trailer\nc\n", "", {"%%Page: 1 1\nb\n"}},
    {"a_trailer_before_a_page_is_not_the_documents",
     "%%Page: 1\n%%Trailer\nb\n%%Page: 2\nc\n",
     "",
     {"%%Page: 1\n%%Trailer\nb\n", "%%Page: 2\nc\n\n"}},
    {"carriage_returns_end_lines",
     "a\r%%Page: 1\rb\r\n%%Page: 2\r\nc\r%%Trailer\r",
     "a\r",
     {"%%Page: 1\rb\r\n", "%%Page: 2\r\nc\r"}},
    {"only_whole_keywords_at_line_starts",
     "%%Pages: 2\n (%%Page: 1)\n%%PageTrailer\n%%Page layout\nx %%Page: 1\n",
     "",
     {"%%Pages: 2\n (%%Page: 1)\n%%PageTrailer\n%%Page layout\nx %%Page: 1\n\n"}},
    {"embedded_documents_are_passed_over",
     "%%Page: 1\n" + embedded + "%%Page: 2\n",
     "",
     {"%%Page: 1\n" + embedded, "%%Page: 2\n\n"}},
    {"data_are_passed_over_by_their_count_of_bytes",
     "%%Page: 1\n%%BeginData: 23 Binary Bytes\n%%EndData\n%%Page: 7 7\n\n%%EndData\n%%Page: 2\n",
     "",
     {"%%Page: 1\n%%BeginData: 23 Binary Bytes\n%%EndData\n%%Page: 7 7\n\n%%EndData\n",
      "%%Page: 2\n\n"}},
    {"data_are_passed_over_by_their_count_of_lines",
     "%%BeginData: 2 ASCII Lines\n%%EndData\r\n%%Page: 7\r\n%%EndData\n%%Page: 1\n",
     "%%BeginData: 2 ASCII Lines\n%%EndData\r\n%%Page: 7\r\n%%EndData\n",
     {"%%Page: 1\n\n"}},
    {"a_wrong_count_gives_way_to_the_closing_line",
     "%%BeginBinary: 99999999999\n%%Page: 7\n%%EndBinary\n%%Page: 1\n",
     "%%BeginBinary: 99999999999\n%%Page: 7\n%%EndBinary\n",
     {"%%Page: 1\n\n"}},
    {"data_that_never_close_are_none",
     "%%BeginData: 3\nx\n%%Page: 1\n",
     "%%BeginData: 3\nx\n",
     {"%%Page: 1\n\n"}},
    {"end_of_transmission_is_stripped", "\4%!\nx\n\4\r\n\4", "", {"%!\nx\n\n"}},
    {"printer_commands_are_stripped",
     "\x1B%-12345X@PJL SET X\r\n@PJL ENTER LANGUAGE=POSTSCRIPT\r\n%!\nx\n\4\x1B%-12345X@PJL "
     "EOJ\r\n",
     "",
     {"%!\nx\n\n"}},
    {"a_dos_header_is_followed",
     "\xC5\xD0\xD3\xC6\x20\0\0\0\x05\0\0\0"s + std::string(20, 'h') + "%!\nx preview",
     "",
     {"%!\nx \n"}},
};

INSTANTIATE_TEST_SUITE_P(DscDocument, Split, testing::ValuesIn(splitCases),
                         [](const auto& test) { return test.param.name; });

TEST(DscDocument, RefusesADosHeaderThatPointsOutside) {
  EXPECT_THROW(DscDocument("\xC5\xD0\xD3\xC6\x20\0\0\0\xFF\xFF\xFF\xFF"s + std::string(40, 'h')),
               std::invalid_argument);
}

struct BoxCase {
  const char* name;
  std::string file;
  std::vector<double> box;  // of the last page, empty for none
};

class Boxes : public testing::TestWithParam<BoxCase> {};

TEST_P(Boxes, Count) {
  const DscDocument document(GetParam().file);
  const auto box = document.pages().back().box;
  std::vector<double> numbers;
  if (box) {
    numbers = {box->left, box->bottom, box->right, box->top};
  }
  EXPECT_EQ(numbers, GetParam().box);
}

const std::vector<BoxCase> boxCases = {
    {"none", "%%Page: 1\n", {}},
    {"the_documents", "%%BoundingBox: -1 2 30 40.5\n%%Page: 1\n", {-1, 2, 30, 40.5}},
    {"the_first_one", "%%BoundingBox: 0 0 1 1\n%%BoundingBox: 0 0 2 2\n", {0, 0, 1, 1}},
    {"at_the_end",
     "%%BoundingBox: (atend)\n%%Page: 1\n%%BoundingBox: 0 0 9 9\n%%Trailer\n%%BoundingBox: 0 0 3 "
     "3\n",
     {0, 0, 3, 3}},
    {"the_pages_own",
     "%%BoundingBox: 0 0 1 1\n%%Page: 1\n%%PageBoundingBox:0 0 2 2\n",
     {0, 0, 2, 2}},
    {"the_pages_own_at_its_end",
     "%%Page: 1\n%%PageBoundingBox: (atend)\n%%PageTrailer\n%%PageBoundingBox: 0 0 4 "
     "4\n%%Trailer\n",
     {0, 0, 4, 4}},
    {"not_that_of_another_page", "%%Page: 1\n%%PageBoundingBox: 0 0 2 2\n%%Page: 2\n", {}},
    {"the_default_of_all_pages",
     "%%BoundingBox: 0 0 1 1\n%%PageBoundingBox: 0 0 5 5\n%%Page: 1\n",
     {0, 0, 5, 5}},
    {"not_that_of_an_embedded_document",
     "%%Page: 1\n%%BeginDocument: x\n%%PageBoundingBox: 0 0 5 5\n%%EndDocument\n",
     {}},
    {"no_empty_box", "%%BoundingBox: 0 0 0 0\n", {}},
    {"no_words", "%%BoundingBox: 0 0 a b\n", {}},
    {"no_infinity", "%%BoundingBox: 0 0 inf 9\n", {}},
};

INSTANTIATE_TEST_SUITE_P(DscDocument, Boxes, testing::ValuesIn(boxCases),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace quillpress
