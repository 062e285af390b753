// The names of filters that a string carries away from a chain, outermost first.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "postscript/lib/FileObject.h"
#include "postscript/lib/Interpreter.h"
#include "postscript/lib/StringObject.h"

namespace postscript {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> filtersRead(const std::string& chain) {
  Interpreter interpreter;
  interpreter.run((chain + " 0 string readstring pop ").c_str());
  return as<StringObject>(interpreter.operandStack.top())->filters();
}

TEST(FilterChain, IsNamedFromTheOutermostFilterToTheBaseString) {
  EXPECT_THAT(filtersRead("(abc) /ASCII85Decode filter"), ElementsAre("ASCII85Decode"));
  EXPECT_THAT(filtersRead("(abc) /ASCII85Decode filter /RunLengthDecode filter"),
              ElementsAre("RunLengthDecode", "ASCII85Decode"));
  EXPECT_THAT(filtersRead("<41> /A filter /B filter"), ElementsAre("B", "A", "ASCIIHexDecode"));
}

TEST(FilterChain, LeavesOutSubFileDecode) {
  EXPECT_THAT(filtersRead("(abc) 0 () /SubFileDecode filter"), IsEmpty());
  EXPECT_THAT(filtersRead("(abc) /A filter 0 () /SubFileDecode filter /B filter"),
              ElementsAre("B", "A"));
}

TEST(FilterChain, GoesOnFromAStringThatWasRead) {
  EXPECT_THAT(filtersRead("(abc) /A filter 0 string readstring pop /B filter"),
              ElementsAre("B", "A"));
}

TEST(Filter, HoldsItsSource) {
  Interpreter interpreter;
  interpreter.run("/s (abc) def s /A filter ");
  const auto* filter = as<FileObject>(interpreter.operandStack.top());
  ASSERT_TRUE(filter);
  EXPECT_EQ(filter->body().mode, FileData::Mode::filter);
  EXPECT_EQ(filter->body().limit, 0x7fffffffu);
  EXPECT_EQ(filter->body().source->refCount, 2);
  interpreter.run("pop /s 0 def ");
  EXPECT_EQ(interpreter.operandStack.size(), 0);  // and the body still holds the string
}

}  // namespace
}  // namespace postscript
