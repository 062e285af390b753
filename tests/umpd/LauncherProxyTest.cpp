// The launcher's channel as the driver's side sees it; the launcher's part is played by a hook.
#include "umpd/LauncherProxy.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"
#include "umpd/Impersonation.h"
#include "umpd/ProtectedMode.h"
#include "umpd/RunProcess.h"

namespace {

using Kind = SimulatedObject::Kind;
using Channel = InterProcessComms<LauncherStruct>;

constexpr std::size_t commandAt = 3, printerAt = 263, fileAt = 523, docAt = 783, endAt = 1043;

class LauncherProxyTest : public OnMachine {
 protected:
  // A launcher that, if at all, answers when its event is set.
  void launcherRuns(bool answering = true) {
    objects.holdElsewhere(Kind::mutex, base + u"_mutex");
    SimulatedObject& event = objects.holdElsewhere(Kind::event, base + u"_event");
    std::vector<std::byte>& bytes = objects.holdElsewhere(Kind::mapping, base + u"_sm", 1303).bytes;
    std::fill(bytes.begin(), bytes.end() - 1, std::byte{'~'});
    machine.journal.before("wait", [this, answering, &event] {
      if (answering && event.signalled) objects.find(base + u"_end")->signalled = true;
      event.signalled = false;
    });
  }
  std::string field(std::size_t offset) {
    return reinterpret_cast<const char*>(objects.find(base + u"_sm")->bytes.data()) + offset;
  }

  SimulatedObjects& objects = machine.objects;
  const std::u16string base = u"Local\\tqpsend_pat";
  LauncherProxy proxy{platform};
};

TEST_F(LauncherProxyTest, FillsTheFieldsOfEachMessage) {
  launcherRuns();
  EXPECT_TRUE(proxy.startprint(u"Office"));
  EXPECT_EQ(field(commandAt), "startprint");
  EXPECT_EQ(field(printerAt), "Office");
  EXPECT_EQ(field(fileAt), std::string(1302 - fileAt, '~'));

  // A field keeps to its place.
  EXPECT_TRUE(proxy.stopprint(u"", std::u16string(260, u'\u00e9'), std::u16string(259, u'f')));
  EXPECT_EQ(field(0), "~~~stopprint");
  EXPECT_EQ(field(printerAt), "");
  EXPECT_EQ(field(docAt), std::string(259, '\xe9'));
  EXPECT_EQ(field(fileAt), std::string(259, 'f'));
  EXPECT_EQ(field(endAt), std::string(259, '~'));
  EXPECT_EQ(objects.hangs, 0u);
  EXPECT_EQ(machine.journal.count("openMapping"), 1u);
}

TEST_F(LauncherProxyTest, WithoutALauncherNothingIsWaitedFor) {
  EXPECT_FALSE(proxy.startprint(u"Office"));
  EXPECT_EQ(machine.journal.count("createEvent"), 0u);
  // The mapping is this side's now, for anybody and for programs of low integrity.
  const SimulatedObject& mapping = *objects.find(base + u"_sm");
  EXPECT_EQ(mapping.bytes.size(), 1303u);
  EXPECT_TRUE(mapping.openToAll);
  EXPECT_EQ(mapping.label, "S:(ML;;NW;;;LW)");
}

TEST_F(LauncherProxyTest, ReportsWhatFails) {
  const std::pair<const char*, std::u16string> failures[] = {
      {"mapView", u""},
      {"openMutex", u""},
      {"createEvent", u"IPC sendMsg create event failed"},
      {"openEvent", u"IPC sendMsg setting event failed"},
      {"setEvent", u"IPC sendMsg setting event failed"}};
  launcherRuns();
  for (const auto& [operation, caption] : failures) {
    machine.messages.boxes.clear();
    machine.journal.failAlways(operation);
    EXPECT_FALSE(LauncherProxy(platform).startprint(u"Office")) << operation;
    machine.journal.failAlways(operation, false);
    ASSERT_EQ(machine.messages.boxes.size(), caption.empty() ? 0u : 1u) << operation;
    if (caption.empty()) continue;
    EXPECT_EQ(machine.messages.boxes[0].caption, caption);
    EXPECT_EQ(machine.messages.boxes[0].flags, 0u);
  }
  machine.journal.failAlways("openMapping");  // then it is made, which opens the one that stands
  EXPECT_TRUE(LauncherProxy(platform).startprint(u"Office"));
  machine.journal.failAlways("createMapping");
  EXPECT_FALSE(LauncherProxy(platform).stopprint(u"a", u"b", u"c"));
  EXPECT_EQ(simulated.openHandles(), 0u);
}

TEST_F(LauncherProxyTest, ATimeOutIsTheOnlyFailureOfTheWait) {
  launcherRuns(false);
  Channel channel(platform, u"tqpsend", 500);
  EXPECT_FALSE(channel.sendMsg());  // nothing is mapped
  EXPECT_EQ(machine.journal.count("openMutex"), 0u);
  ASSERT_TRUE(channel.openSharedMemory());
  EXPECT_FALSE(channel.sendMsg());
  machine.journal.failAlways("wait");
  EXPECT_TRUE(channel.sendMsg());
}

TEST_F(LauncherProxyTest, AListenersChannelWakesItAtTheEnd) {
  SimulatedObject& event = objects.holdElsewhere(Kind::event, base + u"_event");
  for (const bool listening : {false, true}) {
    {
      Channel channel(platform, u"tqpsend", noTimeLimit);
      if (listening) channel.stopped = 0;
    }
    EXPECT_EQ(event.signalled, listening);
  }
}

using RunProcessTest = OnMachine;

TEST_F(RunProcessTest, SetupRunsForALauncherOfDriverVersion2) {
  const std::u16string old = u"C:\\2\\tqpmsnd.exe";
  const std::u16string filling(260 / 2 - 1 - old.size(), u' ');
  PrinterSettings settings(platform);
  settings.setPrinterName(u"Office");
  for (const auto& command : {std::u16string(u"C:\\3\\tqpmsnd.exe"), old + filling + u" ",
                              u"\"" + old + u"\"", old + filling}) {
    machine.registry.setText(u"HKCU\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run",
                             u"tqpmsnd.exe", command);
    runSetupProgram(settings);
  }
  ASSERT_EQ(machine.processes.started.size(), 2u);
  EXPECT_EQ(machine.journal.count("wait"), 2u);
  EXPECT_EQ(machine.processes.started[0].commandLine,
            u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\tqpsetup.exe -printer=\"Office\" "
            u"-installStartmenu");
  EXPECT_EQ(machine.processes.started[0].creationFlags, 40u);
  EXPECT_FALSE(machine.processes.started[0].showState);
}

TEST_F(RunProcessTest, TellsStateAndExitCode) {
  machine.processes.programExitCode = 7;
  std::uint32_t exitCode = 1;
  EXPECT_TRUE(runProcess(platform, u"a", u"C:\\d", false, &exitCode, 11));
  EXPECT_EQ(exitCode, 1u);
  EXPECT_TRUE(runProcess(platform, u"a", u"", true, &exitCode, 5));
  EXPECT_EQ(exitCode, 7u);
  EXPECT_EQ(machine.processes.started[0].showState, 0u);
  EXPECT_EQ(machine.processes.started[1].showState, 5u);
  machine.journal.failAlways("createProcess");
  EXPECT_FALSE(runProcess(platform, u"a b", u"", true, nullptr, 0));
  EXPECT_EQ(machine.messages.debugOutput.back(), u"CreateProcess failed.  Cmd Line : a b\n");
  EXPECT_EQ(simulated.openHandles(), 0u);
}

using ProtectedModeTest = OnMachine;

TEST_F(ProtectedModeTest, ShadowsTheApplicationData) {
  auto& folders = machine.files.folders;
  const std::string cache = "\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\";
  const auto path = [&] { return narrow(virtualizedTempPath(platform)); };
  folders[SpecialFolder::localApplicationData] = u"C:\\Data\\Local";
  EXPECT_EQ(path(), "C:\\Data\\Local" + cache + "C\\Data\\Local\\");
  folders[SpecialFolder::localApplicationData] = u"";
  folders[SpecialFolder::applicationData] = u"D:\\R\\";
  EXPECT_EQ(path(), "D:\\R\\" + cache + "D\\R\\");
  folders[SpecialFolder::applicationData] = u"D:\\" + std::u16string(250, u'r');
  EXPECT_EQ(path().size(), 519u);
  folders.clear();
  EXPECT_EQ(path(), cache);
}

using ImpersonationTest = OnMachine;

TEST_F(ImpersonationTest, StepsOutAndBack) {
  Impersonation impersonation(platform);
  impersonation.revertToSpooler();
  EXPECT_FALSE(machine.spooler.impersonating);
  impersonation.returnToClient();
  EXPECT_TRUE(machine.spooler.impersonating);

  machine.modules.present[u"spoolss.dll"].clear();
  impersonation.revertToSpooler();
  machine.modules.present.erase(u"spoolss.dll");
  impersonation.revertToSpooler();
  simulated.become(WindowsRelease::windows98);
  impersonation.revertToSpooler();
  impersonation.returnToClient();
  ASSERT_EQ(machine.messages.boxes.size(), 2u);
  EXPECT_EQ(machine.messages.boxes[0].caption, u"GetProcAddress RevertToPrinterSelf");
  EXPECT_EQ(machine.messages.boxes[1].caption, u"LoadLibrary spoolss.dll");
  EXPECT_EQ(machine.messages.boxes[1].flags, 0x200000u);
  EXPECT_EQ(machine.journal.count("impersonatePrinterClient"), 1u);
  EXPECT_EQ(simulated.openHandles(), 0u);
}

}  // namespace
