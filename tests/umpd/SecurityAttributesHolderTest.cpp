#include "umpd/SecurityAttributesHolder.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/umpd/OnMachine.h"
#include "tests/umpd/Wide.h"

namespace umpd {
namespace {

using SecurityAttributesTest = OnMachine;

TEST_F(SecurityAttributesTest, LetEverybodyIn) {
  const std::pair<WindowsRelease, const char*> labels[] = {
      {WindowsRelease::windows98, nullptr},
      {WindowsRelease::nt4, ""},
      {WindowsRelease::windows2000, ""},
      {WindowsRelease::vista, "S:(ML;;NW;;;LW)"}};
  for (const auto& [release, label] : labels) {
    simulated_.become(release);
    SecurityAttributesHolder holder;
    const SecurityAttributes* attributes = buildSecurityAttributes(platform_, holder);
    ASSERT_EQ(attributes != nullptr, label != nullptr);
    const OwnedObject mutex = platform_.objects.createMutex(attributes, u"m");
    const SimulatedObject& made = *machine_.objects.find(u"m");
    EXPECT_EQ(made.securityLength, label ? 8u : 0u);
    EXPECT_EQ(made.openToAll, label != nullptr);
    EXPECT_EQ(made.label, label ? label : "");
  }
  EXPECT_EQ(simulated_.openHandles(), 0u);
}

TEST_F(SecurityAttributesTest, GoOnWithoutTheLabel) {
  const std::string convert = "ConvertStringSecurityDescriptorToSecurityDescriptor failed\n";
  const std::string get = "GetSecurityDescriptorSacl failed\n";
  // The holder's length, then the box's caption, then what the debugger reads.
  const std::pair<const char*, std::string> cases[] = {
      {"allocateDescriptor", "0"},
      {"initializeDescriptor", "0InitializeSecurityDescriptor failed"},
      {"setNullDacl", "0SetSecurityDescriptorDacl failed"},
      {"loadModule", "8" + convert + get},
      {"findFunction", "8" + convert + get},
      {"convertText", "8" + convert + get},
      {"sacl", "8" + get},
      {"setSacl", "8SetSecurityDescriptorSacl failed\n"},
  };
  for (const auto& [operation, expected] : cases) {
    machine_.messages.boxes.clear();
    machine_.messages.debugOutput.clear();
    machine_.journal.failAlways(operation);
    SecurityAttributesHolder holder;
    const SecurityAttributes* attributes = buildSecurityAttributes(platform_, holder);
    machine_.journal.failAlways(operation, false);
    ASSERT_NE(attributes, nullptr);
    EXPECT_EQ(attributes->descriptor != DescriptorHandle{}, attributes->length == 8) << operation;
    std::string seen = std::to_string(attributes->length);
    for (const auto& box : machine_.messages.boxes) {
      seen += narrow(box.caption);
    }
    for (const auto& line : machine_.messages.debugOutput) {
      seen += narrow(line);
    }
    EXPECT_EQ(seen, expected) << operation;
  }
}

}  // namespace
}  // namespace umpd
