#include "umpd/Impersonation.h"

#include <gtest/gtest.h>

#include "tests/umpd/OnMachine.h"

namespace umpd {
namespace {

using ImpersonationTest = OnMachine;

TEST_F(ImpersonationTest, StepsOutAndBack) {
  Impersonation impersonation(platform_);
  impersonation.revertToSpooler();
  EXPECT_FALSE(machine_.spooler.impersonating);
  EXPECT_EQ(machine_.journal.count("findFunction"), 1u);
  impersonation.returnToClient();
  EXPECT_TRUE(machine_.spooler.impersonating);
  EXPECT_EQ(machine_.journal.count("findFunction"), 2u);

  // Without a client there is nothing to return to, and nothing to look up for it.
  machine_.spooler.impersonating = false;
  impersonation.revertToSpooler();
  impersonation.returnToClient();
  EXPECT_FALSE(machine_.spooler.impersonating);
  EXPECT_EQ(machine_.journal.count("findFunction"), 3u);

  machine_.modules.present[u"spoolss.dll"].clear();
  impersonation.revertToSpooler();
  machine_.modules.present.erase(u"spoolss.dll");
  impersonation.revertToSpooler();
  simulated_.become(WindowsRelease::windows98);
  impersonation.revertToSpooler();
  impersonation.returnToClient();
  ASSERT_EQ(machine_.messages.boxes.size(), 2u);
  EXPECT_EQ(machine_.messages.boxes[0].caption, u"GetProcAddress RevertToPrinterSelf");
  EXPECT_EQ(machine_.messages.boxes[1].caption, u"LoadLibrary spoolss.dll");
  EXPECT_EQ(machine_.messages.boxes[1].flags, 0x200000u);
  EXPECT_EQ(machine_.journal.count("impersonatePrinterClient"), 1u);
  EXPECT_EQ(simulated_.openHandles(), 0u);
}

}  // namespace
}  // namespace umpd
