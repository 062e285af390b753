#include "umpd/RunProcess.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "tests/umpd/OnMachine.h"

namespace umpd {
namespace {

using RunProcessTest = OnMachine;

TEST_F(RunProcessTest, SetupRunsForALauncherOfDriverVersion2) {
  const std::u16string old = u"C:\\2\\tqpmsnd.exe";
  const std::u16string filling(260 / 2 - 1 - old.size(), u' ');
  PrinterSettings settings(platform_);
  settings.setPrinterName(u"Office");
  for (const auto& command : {std::u16string(u"C:\\3\\tqpmsnd.exe"), old + filling + u" ",
                              u"\"" + old + u"\"", old + filling}) {
    machine_.registry.setText(u"HKCU\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run",
                              u"tqpmsnd.exe", command);
    runSetupProgram(settings);
  }
  ASSERT_EQ(machine_.processes.started.size(), 2u);
  EXPECT_EQ(machine_.journal.count("wait"), 2u);
  EXPECT_EQ(machine_.processes.started[0].commandLine,
            u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\tqpsetup.exe -printer=\"Office\" "
            u"-installStartmenu");
  EXPECT_EQ(machine_.processes.started[0].creationFlags, 40u);
  EXPECT_FALSE(machine_.processes.started[0].showState);
}

TEST_F(RunProcessTest, SetupNeedsTheDriversFolder) {
  PrinterSettings settings(platform_);
  machine_.registry.setText(u"HKCU\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run",
                            u"tqpmsnd.exe", u"\"C:\\2\\tqpmsnd.exe\"");
  machine_.journal.failAlways("driverDirectory");
  runSetupProgram(settings);
  EXPECT_TRUE(machine_.processes.started.empty());
}

TEST_F(RunProcessTest, TellsStateAndExitCode) {
  machine_.processes.programExitCode = 7;
  uint32_t exitCode = 1;
  EXPECT_TRUE(runProcess(platform_, u"a", u"C:\\d", false, &exitCode, 11));
  EXPECT_EQ(exitCode, 1u);
  EXPECT_TRUE(runProcess(platform_, u"a", u"", true, &exitCode, 5));
  EXPECT_EQ(exitCode, 7u);
  EXPECT_EQ(machine_.processes.started[0].showState, 0u);
  EXPECT_EQ(machine_.processes.started[1].showState, 5u);
  machine_.journal.failAlways("createProcess");
  EXPECT_FALSE(runProcess(platform_, u"a b", u"", true, nullptr, 0));
  EXPECT_EQ(machine_.messages.debugOutput.back(), u"CreateProcess failed.  Cmd Line : a b\n");
  EXPECT_EQ(simulated_.openHandles(), 0u);
}

}  // namespace
}  // namespace umpd
