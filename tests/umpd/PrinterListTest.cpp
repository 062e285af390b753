#include "umpd/PrinterList.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/umpd/OnMachine.h"

namespace umpd {
namespace {

using PrinterListTest = OnMachine;

TEST_F(PrinterListTest, FindPortTakesThePortOrItsCommaForm) {
  machine_.spooler.add(u"Office", u"TQP1:");
  machine_.spooler.add(u"Foreign", u"\\\\server\\laser", u"Another Driver");
  machine_.spooler.add(u"Backslashed", u"\\\\server\\laser", u"tarnwick QUILLPRESS");
  machine_.spooler.add(u"Commas", u",,Server,inkjet");
  machine_.spooler.add(u"Not the first", u"TQP1:");
  machine_.spooler.add(u"No port", u"").port.reset();
  machine_.spooler.add(u"No driver", u",,server,orphan").driver.reset();
  const std::pair<std::u16string, std::u16string> cases[] = {
      {u",,server,laser", u"Backslashed"}, {u"\\\\SERVER\\laser", u"Backslashed"},
      {u",,server,inkjet", u"Commas"},     {u"\\\\server\\inkjet", u"(none)"},
      {u",,server,orphan", u"(none)"},     {u"TQP1:", u"Office"}};
  for (const auto& [wanted, found] : cases) {
    std::u16string result = u"(none)";
    FindPort callback(wanted, result);
    EXPECT_EQ(enumeratePrinters(platform_, callback), found != u"(none)");
    EXPECT_EQ(result, found);
  }
}

}  // namespace
}  // namespace umpd
