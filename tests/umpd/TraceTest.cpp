#include "umpd/Trace.h"

#include <gtest/gtest.h>

#include <vector>

#include "umpd/platform/Platform.h"

namespace umpd {
namespace {

TEST(Trace, ShowsEachArgumentAsWhatItIs) {
  const std::u16string text = u"Caf\u00e9";
  const char16_t* const none = nullptr;
  const std::vector<TraceArgument> arguments = {-5,   4000000000u, 0x14F13,  PrinterHandle{16},
                                                text, none,        "narrow", true};
  EXPECT_EQ(formatTrace("%d %d %x [%d] %s (%s) %s %d\n", arguments),
            "-5 4000000000 14f13 [16] Caf? ((null)) narrow 1\n");
  // A letter that does not fit its argument does no harm, nor does one that is missing.
  EXPECT_EQ(formatTrace("%s %x", std::vector<TraceArgument>{5, text}), "5 Caf?");
  EXPECT_EQ(formatTrace("%", std::vector<TraceArgument>{7}), "7");
  EXPECT_EQ(formatTrace("plain", {}), "plain");
  EXPECT_EQ(TraceArgument(std::optional<std::u16string>()).shownAs('s'), "(null)");
}

}  // namespace
}  // namespace umpd
