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

}  // namespace
}  // namespace umpd
