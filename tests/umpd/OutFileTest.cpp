#include "umpd/OutFile.h"

#include <gtest/gtest.h>

#include <span>

#include "tests/umpd/OnMachine.h"

namespace umpd {
namespace {

using OutFileTest = OnMachine;

TEST_F(OutFileTest, AppendsOrBeginsAnew) {
  OutFile file(platform_.files);
  for (const bool append : {false, true}) {
    ASSERT_TRUE(file.open(u"C:\\work\\f", append));
    EXPECT_TRUE(file.write(std::as_bytes(std::span("ab", 2))));
    EXPECT_EQ(machine_.files.content(u"C:\\work\\f"), append ? "abab" : "ab");
  }
}

TEST_F(OutFileTest, WithoutAFileNothingIsWritten) {
  const auto bytes = std::as_bytes(std::span("ab", 2));
  {
    OutFile file(platform_.files);
    EXPECT_FALSE(file.write(bytes)) << "never opened";
    EXPECT_FALSE(file.open(u"C:\\nowhere\\f", false));
    EXPECT_FALSE(file.write(bytes));
    EXPECT_TRUE(file.open(u"C:\\work\\f", false)) << "it may be tried again";
    machine_.files.roomLeft = 1;
    EXPECT_FALSE(file.write(bytes)) << "a part of the bytes is a failure";
  }
  EXPECT_EQ(simulated_.openHandles(), 0u);
}

}  // namespace
}  // namespace umpd
