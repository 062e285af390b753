// The launcher's channel as the driver's side sees it; the launcher's part is played by a hook.
#include "umpd/LauncherProxy.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"

namespace umpd {
namespace {

using Kind = SimulatedObject::Kind;
using Channel = InterProcessComms<LauncherStruct>;

constexpr size_t commandAt = 3, printerAt = 263, fileAt = 523, docAt = 783, endAt = 1043;

class LauncherProxyTest : public OnMachine {
 protected:
  // A launcher that, if at all, answers when its event is set.
  void launcherRuns(bool answering = true) {
    objects_.holdElsewhere(Kind::mutex, base_ + u"_mutex");
    SimulatedObject& event = objects_.holdElsewhere(Kind::event, base_ + u"_event");
    std::vector<std::byte>& bytes =
        objects_.holdElsewhere(Kind::mapping, base_ + u"_sm", 1303).bytes;
    std::fill(bytes.begin(), bytes.end() - 1, std::byte{'~'});
    machine_.journal.before("wait", [this, answering, &event] {
      if (answering && event.signalled) {
        objects_.find(base_ + u"_end")->signalled = true;
      }
      event.signalled = false;
    });
  }
  std::string field(size_t offset) {
    return reinterpret_cast<const char*>(objects_.find(base_ + u"_sm")->bytes.data()) + offset;
  }

  SimulatedObjects& objects_ = machine_.objects;
  const std::u16string base_ = u"Local\\tqpsend_pat";
  LauncherProxy proxy_{platform_};
};

TEST_F(LauncherProxyTest, FillsTheFieldsOfEachMessage) {
  launcherRuns();
  EXPECT_TRUE(proxy_.startprint(u"Office"));
  EXPECT_EQ(field(commandAt), "startprint");
  EXPECT_EQ(field(printerAt), "Office");
  EXPECT_EQ(field(fileAt), std::string(1302 - fileAt, '~'));

  // A field keeps to its place.
  EXPECT_TRUE(proxy_.stopprint(u"", std::u16string(260, u'\u00e9'), std::u16string(259, u'f')));
  EXPECT_EQ(field(0), "~~~stopprint");
  EXPECT_EQ(field(printerAt), "");
  EXPECT_EQ(field(docAt), std::string(259, '\xe9'));
  EXPECT_EQ(field(fileAt), std::string(259, 'f'));
  EXPECT_EQ(field(endAt), std::string(259, '~'));
  EXPECT_EQ(objects_.hangs, 0u);
  EXPECT_EQ(machine_.journal.count("openMapping"), 1u);
}

TEST_F(LauncherProxyTest, WithoutALauncherNothingIsWaitedFor) {
  EXPECT_FALSE(proxy_.startprint(u"Office"));
  EXPECT_EQ(machine_.journal.count("createEvent"), 0u);
  // The mapping is this side's now, for anybody and for programs of low integrity.
  const SimulatedObject& mapping = *objects_.find(base_ + u"_sm");
  EXPECT_EQ(mapping.bytes.size(), 1303u);
  EXPECT_TRUE(mapping.openToAll);
  EXPECT_EQ(mapping.label, "S:(ML;;NW;;;LW)");
}

TEST_F(LauncherProxyTest, WithoutTheDriversFolderNothingIsStarted) {
  machine_.journal.failAlways("driverDirectory");
  EXPECT_FALSE(proxy_.startLauncher());
  EXPECT_TRUE(machine_.processes.started.empty());
  machine_.journal.failAlways("driverDirectory", false);
  EXPECT_TRUE(proxy_.startLauncher()) << "the failure is not remembered";
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
    machine_.messages.boxes.clear();
    machine_.journal.failAlways(operation);
    EXPECT_FALSE(LauncherProxy(platform_).startprint(u"Office")) << operation;
    machine_.journal.failAlways(operation, false);
    ASSERT_EQ(machine_.messages.boxes.size(), caption.empty() ? 0u : 1u) << operation;
    if (caption.empty()) {
      continue;
    }
    EXPECT_EQ(machine_.messages.boxes[0].caption, caption);
    EXPECT_EQ(machine_.messages.boxes[0].flags, 0u);
  }
  machine_.journal.failAlways("openMapping");  // then it is made, which opens the one that stands
  EXPECT_TRUE(LauncherProxy(platform_).startprint(u"Office"));
  machine_.journal.failAlways("createMapping");
  EXPECT_FALSE(LauncherProxy(platform_).stopprint(u"a", u"b", u"c"));
  EXPECT_EQ(simulated_.openHandles(), 0u);
}

// Any program of the user can make an object of that name before the launcher does.
TEST_F(LauncherProxyTest, AMappingThatIsTooSmallIsNotWrittenTo) {
  launcherRuns();
  SimulatedObject& mapping = *objects_.find(base_ + u"_sm");
  mapping.committed = false;
  EXPECT_FALSE(proxy_.startprint(u"Office"));
  mapping.committed = true;
  mapping.bytes.resize(1302);
  EXPECT_FALSE(proxy_.stopprint(u"a", u"b", u"c"));
  EXPECT_EQ(machine_.journal.count("createEvent"), 0u);
  mapping.bytes.resize(1303);
  EXPECT_TRUE(proxy_.startprint(u"Office"));
}

TEST_F(LauncherProxyTest, ATimeOutIsTheOnlyFailureOfTheWait) {
  launcherRuns(false);
  Channel channel(platform_, u"tqpsend", 500);
  EXPECT_FALSE(channel.sendMsg());  // nothing is mapped
  EXPECT_EQ(machine_.journal.count("openMutex"), 0u);
  ASSERT_TRUE(channel.openSharedMemory());
  EXPECT_FALSE(channel.sendMsg());
  machine_.journal.failAlways("wait");
  EXPECT_TRUE(channel.sendMsg());
}

TEST_F(LauncherProxyTest, AListenersChannelWakesItAtTheEnd) {
  SimulatedObject& event = objects_.holdElsewhere(Kind::event, base_ + u"_event");
  for (const bool listening : {false, true}) {
    {
      Channel channel(platform_, u"tqpsend", noTimeLimit);
      if (listening) {
        channel.stopped = 0;
      }
    }
    EXPECT_EQ(event.signalled, listening);
  }
}

}  // namespace
}  // namespace umpd
