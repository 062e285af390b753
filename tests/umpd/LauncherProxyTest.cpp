// The launcher's channel as the driver's side sees it; the launcher's part is played by a hook.
#include "umpd/LauncherProxy.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/umpd/Wide.h"
#include "umpd/Impersonation.h"
#include "umpd/ProtectedMode.h"
#include "umpd/RunProcess.h"
#include "umpd/platform/simulated/SimulatedPlatform.h"

namespace {

using Kind = SimulatedObject::Kind;

constexpr std::size_t commandAt = 3, printerAt = 263, fileAt = 523, docAt = 783;

class LauncherProxyTest : public testing::Test {
 protected:
  // A launcher that answers whenever its event is set.
  void startLauncher(bool answering = true) {
    objects.holdElsewhere(Kind::mutex, base + u"_mutex");
    SimulatedObject& event = objects.holdElsewhere(Kind::event, base + u"_event");
    objects.holdElsewhere(Kind::mapping, base + u"_sm", 1303);
    machine.journal.before("wait", [this, answering, &event] {
      if (answering && event.signalled) objects.find(base + u"_end")->signalled = true;
      event.signalled = false;
    });
  }
  std::vector<std::byte>& record() { return objects.find(base + u"_sm")->bytes; }
  std::string field(std::size_t offset) {
    return reinterpret_cast<const char*>(record().data()) + offset;
  }

  SimulatedPlatform simulated;
  SimulatedParts& machine = simulated.machine;
  SimulatedObjects& objects = machine.objects;
  const std::u16string base = u"Local\\tqpsend_pat";
  LauncherProxy proxy{simulated.platform};
};

TEST_F(LauncherProxyTest, FillsTheFieldsOfEachMessage) {
  EXPECT_FALSE(proxy.isLauncherRunning());
  startLauncher();
  EXPECT_TRUE(proxy.isLauncherRunning());
  std::fill(record().begin(), record().end() - 1, std::byte{'~'});
  EXPECT_TRUE(proxy.startprint(u"Office"));
  EXPECT_EQ(field(commandAt), "startprint");
  EXPECT_EQ(field(printerAt), "Office");
  EXPECT_EQ(field(fileAt), std::string(1302 - fileAt, '~'));

  EXPECT_TRUE(proxy.stopprint(u"", u"d\u00e9", u"C:\\out\\x.pdf"));
  EXPECT_EQ(field(commandAt), "stopprint");
  EXPECT_EQ(field(printerAt), "");
  EXPECT_EQ(field(docAt), "d\xe9");
  EXPECT_EQ(field(fileAt), "C:\\out\\x.pdf");
  EXPECT_EQ(record()[0], std::byte{'~'});
  EXPECT_EQ(record()[1043], std::byte{'~'});
  EXPECT_EQ(objects.hangs, 0u);
  EXPECT_EQ(machine.journal.count("openMapping"), 1u);
}

TEST_F(LauncherProxyTest, CutsTextsWithinTheirFields) {
  startLauncher();
  EXPECT_TRUE(proxy.stopprint(std::u16string(260, u'p'), std::u16string(259, u'd'),
                              std::u16string(2000, u'f')));
  EXPECT_EQ(field(printerAt), std::string(259, 'p'));
  EXPECT_EQ(field(docAt), std::string(259, 'd'));
  EXPECT_EQ(field(fileAt), std::string(259, 'f'));
  EXPECT_EQ(record()[1043], std::byte{0});
}

TEST_F(LauncherProxyTest, WithoutALauncherNothingIsWaitedFor) {
  EXPECT_FALSE(proxy.startprint(u"Office"));
  EXPECT_EQ(machine.journal.count("createEvent"), 0u);
  // The mapping is this side's now, for anybody and for programs of low integrity.
  EXPECT_EQ(record().size(), 1303u);
  const SimulatedObject& mapping = *objects.find(base + u"_sm");
  EXPECT_TRUE(mapping.openToAll);
  EXPECT_EQ(mapping.label, "S:(ML;;NW;;;LW)");
}

struct Failure {
  const char* operation;
  std::u16string caption;  // of the box; empty if there is none
};

TEST_F(LauncherProxyTest, ReportsWhatFails) {
  const Failure failures[] = {{"openMapping", u""},  // then it is made, and opens what stands
                              {"mapView", u""},
                              {"openMutex", u""},
                              {"createEvent", u"IPC sendMsg create event failed"},
                              {"openEvent", u"IPC sendMsg setting event failed"},
                              {"setEvent", u"IPC sendMsg setting event failed"}};
  startLauncher();
  for (const auto& [operation, caption] : failures) {
    LauncherProxy fresh(simulated.platform);
    machine.messages.boxes.clear();
    machine.journal.failAlways(operation);
    EXPECT_EQ(fresh.startprint(u"Office"), std::string_view(operation) == "openMapping");
    machine.journal.failAlways(operation, false);
    ASSERT_EQ(machine.messages.boxes.size(), caption.empty() ? 0u : 1u) << operation;
    if (caption.empty()) continue;
    EXPECT_EQ(machine.messages.boxes[0].caption, caption);
    EXPECT_EQ(machine.messages.boxes[0].flags, 0u);
  }
  machine.journal.failAlways("openMapping");
  machine.journal.failAlways("createMapping");
  EXPECT_FALSE(LauncherProxy(simulated.platform).stopprint(u"a", u"b", u"c"));
  EXPECT_EQ(simulated.openHandles(), 0u);
}

TEST_F(LauncherProxyTest, ATimeOutIsTheOnlyFailureOfTheWait) {
  startLauncher(false);
  InterProcessComms<LauncherStruct> patient(simulated.platform, u"tqpsend", 500);
  EXPECT_FALSE(patient.sendMsg());  // nothing mapped
  EXPECT_EQ(machine.journal.count("openMutex"), 0u);
  ASSERT_TRUE(patient.openSharedMemory());
  EXPECT_FALSE(patient.sendMsg());
  machine.journal.failAlways("wait");
  EXPECT_TRUE(patient.sendMsg());
}

TEST_F(LauncherProxyTest, AListenersChannelWakesItAtTheEnd) {
  SimulatedObject& event = objects.holdElsewhere(Kind::event, base + u"_event");
  { InterProcessComms<LauncherStruct> sender(simulated.platform, u"tqpsend", noTimeLimit); }
  EXPECT_FALSE(event.signalled);
  {
    InterProcessComms<LauncherStruct> listener(simulated.platform, u"tqpsend", noTimeLimit);
    listener.stopped = 0;
  }
  EXPECT_TRUE(event.signalled);
}

TEST_F(LauncherProxyTest, StartsTheLauncherHidden) {
  EXPECT_TRUE(proxy.startLauncher());
  ASSERT_EQ(machine.processes.started.size(), 1u);
  const ProcessRequest& request = machine.processes.started[0];
  EXPECT_EQ(request.commandLine, u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\tqpmsnd.exe");
  EXPECT_EQ(request.creationFlags, 0u);
  EXPECT_EQ(request.showState, 0u);
  startLauncher();
  EXPECT_TRUE(proxy.startLauncher());
  EXPECT_EQ(machine.processes.started.size(), 1u);
  objects.dropElsewhere(base + u"_mutex");
  machine.journal.failAlways("createProcess");
  EXPECT_FALSE(proxy.startLauncher());
}

TEST(ChannelName, HasTheSessionsPrefixFromWindows2000On) {
  SimulatedPlatform simulated;
  const std::pair<WindowsRelease, std::u16string> cases[] = {
      {WindowsRelease::windows98, u"c_pat"},
      {WindowsRelease::nt4, u"c_pat"},
      {WindowsRelease::windows2000, u"Local\\c_pat"}};
  for (const auto& [release, name] : cases) {
    simulated.become(release);
    EXPECT_EQ(buildChannelName(simulated.platform, u"c"), name);
  }
}

TEST(RunSetupProgram, RunsForALauncherOfDriverVersion2) {
  const std::u16string run = u"HKCU\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
  const std::u16string old = u"C:\\2\\tqpmsnd.exe";
  const std::u16string filling(260 / 2 - 1 - old.size(), u' ');
  const std::pair<std::u16string, std::size_t> cases[] = {{u"C:\\d\\3\\tqpmsnd.exe", 0},
                                                          {u"\"" + old + u"\"", 1},
                                                          {old + filling, 1},
                                                          {old + filling + u" ", 0}};
  for (const auto& [command, started] : cases) {
    SimulatedPlatform simulated;
    auto& processes = simulated.machine.processes;
    PrinterSettings settings(simulated.platform);
    settings.setPrinterName(u"Office");
    simulated.machine.registry.setText(run, u"tqpmsnd.exe", command);
    runSetupProgram(settings);
    ASSERT_EQ(processes.started.size(), started);
    EXPECT_EQ(simulated.machine.journal.count("wait"), started);
    if (started == 0) continue;
    EXPECT_EQ(processes.started[0].commandLine,
              u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\tqpsetup.exe -printer=\"Office\" "
              u"-installStartmenu");
    EXPECT_EQ(processes.started[0].creationFlags, 40u);
    EXPECT_FALSE(processes.started[0].showState);
  }
}

TEST(RunProcess, TellsStateAndExitCode) {
  SimulatedPlatform simulated;
  auto& processes = simulated.machine.processes;
  processes.programExitCode = 7;
  std::uint32_t exitCode = 1;
  EXPECT_TRUE(runProcess(simulated.platform, u"a", u"C:\\d", false, &exitCode, 11));
  EXPECT_EQ(exitCode, 1u);
  EXPECT_TRUE(runProcess(simulated.platform, u"a", u"", true, &exitCode, 5));
  EXPECT_EQ(exitCode, 7u);
  EXPECT_EQ(processes.started[0].showState, 0u);
  EXPECT_EQ(processes.started[0].directory, u"C:\\d");
  EXPECT_EQ(processes.started[1].showState, 5u);
  simulated.machine.journal.failAlways("createProcess");
  EXPECT_FALSE(runProcess(simulated.platform, u"a b", u"", true, nullptr, 0));
  EXPECT_EQ(simulated.machine.messages.debugOutput.back(),
            u"CreateProcess failed.  Cmd Line : a b\n");
  EXPECT_EQ(simulated.openHandles(), 0u);
}

TEST(VirtualizedTempPath, ShadowsTheApplicationData) {
  SimulatedPlatform simulated;
  auto& folders = simulated.machine.files.folders;
  const std::string cache = "\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\";
  const auto path = [&] { return narrow(virtualizedTempPath(simulated.platform)); };
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

TEST(ImpersonationTest, StepsOutAndBack) {
  SimulatedPlatform simulated;
  SimulatedSpooler& spooler = simulated.machine.spooler;
  Impersonation impersonation(simulated.platform);
  impersonation.revertToSpooler();
  EXPECT_FALSE(spooler.impersonating);
  impersonation.returnToClient();
  EXPECT_TRUE(spooler.impersonating);
  EXPECT_EQ(simulated.openHandles(), 0u);

  simulated.machine.modules.present[u"spoolss.dll"].clear();
  impersonation.revertToSpooler();
  impersonation.returnToClient();
  simulated.machine.modules.present.erase(u"spoolss.dll");
  impersonation.revertToSpooler();
  impersonation.returnToClient();
  const auto& boxes = simulated.machine.messages.boxes;
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].caption, u"GetProcAddress RevertToPrinterSelf");
  EXPECT_EQ(boxes[1].caption, u"LoadLibrary spoolss.dll");
  EXPECT_EQ(boxes[1].flags, 0x200000u);
  EXPECT_EQ(simulated.machine.journal.count("impersonatePrinterClient"), 1u);
  EXPECT_EQ(simulated.openHandles(), 0u);

  simulated.become(WindowsRelease::windows98);
  impersonation.revertToSpooler();
  EXPECT_EQ(boxes.size(), 2u);
}

}  // namespace
