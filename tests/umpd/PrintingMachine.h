// PrintingMachine: a simulated machine on which a job can be printed. It has the printer "Office"
// with one job in its queue, and a launcher that writes what it is told into the journal.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

#include "tests/umpd/Wide.h"
#include "umpd/JobRecords.h"
#include "umpd/LauncherStruct.h"
#include "umpd/platform/simulated/SimulatedPlatform.h"

namespace umpd {

class PrintingMachine {
 public:
  explicit PrintingMachine(WindowsRelease windowsRelease) : release(windowsRelease) {
    simulated.become(release);
    machine.accounts.accounts = {{u"", u"pat", Sid{true, {0, 0, 0, 0, 0, 5}, {21}}}};
    machine.registry.makeKey(u"HKU\\S-1-5-21");
    office.jobs = {{.jobId = jobNumber, .document = document, .statusText = {}, .position = 1}};
    machine.files.addDirectory(u"C:\\out");
    set(u"DefaultSaveDir", u"C:\\out");
    journal.before("wait", [this] { answerAsLauncher(); });
  }

  void startLauncher() {
    machine.objects.holdElsewhere(SimulatedObject::Kind::mutex, channel_ + u"_mutex");
    machine.objects.holdElsewhere(SimulatedObject::Kind::event, channel_ + u"_event");
  }
  void stopLauncher() { machine.objects.dropElsewhere(channel_ + u"_mutex"); }

  void set(const std::u16string& setting, const std::u16string& value) {
    machine.registry.setText(printerKey_, setting, value);
  }
  std::string stored(const std::u16string& setting) const {
    return narrow(machine.registry.shown(printerKey_, setting));
  }

  // What a job did that others can see, an operation a line.
  std::string story() const {
    constexpr std::string_view told[] = {"createMutex",  "createProcess",  "launcher",
                                         "writePrinter", "openForWriting", "closeFile",
                                         "removeFile",   "setJob"};
    std::string story;
    for (const auto& [operation, detail] : journal.calls()) {
      if (std::ranges::find(told, operation) != std::end(told) ||
          detail.ends_with(u"FinishPrintEv")) {
        story.append(operation)
            .append(detail.empty() ? "" : " ")
            .append(narrow(detail))
            .append("\n");
      }
    }
    return story;
  }
  // "caption|text" of each box, an "\n" behind each. All of them stand above the other windows.
  std::string boxes() const {
    std::string all;
    for (const auto& box : machine.messages.boxes) {
      all += narrow(box.caption) + "|" + narrow(box.text) + "\n";
      EXPECT_EQ(box.flags, 0x200000u);
    }
    return all;
  }
  // Beside what the process keeps for all its life and the handle that the test has.
  size_t leaks() const {
    const ProcessState& kept = simulated.platform.process;
    const size_t expected = 1u + static_cast<bool>(kept.domainControllerMapping) +
                            static_cast<bool>(kept.domainControllerView);
    return simulated.openHandles() - expected;
  }
  SimulatedObject* lock() {
    return machine.objects.find(hasPrefixes_ ? u"Global\\umdriver" : u"umdriver");
  }
  // One whose release the machine refused is nobody's fault.
  bool lockIsFree() {
    return !lock() || lock()->depth == 0 || journal.pickedOperation() == "releaseMutex";
  }

  WindowsRelease release;
  SimulatedPlatform simulated;
  SimulatedParts& machine = simulated.machine;
  Journal& journal = machine.journal;
  SimulatedPrinter& office = machine.spooler.add(u"Office", u"QP1:");
  PrinterHandle officeHandle = machine.spooler.handleOf(office);
  JobRecords records{simulated.platform};

  static constexpr uint32_t jobNumber = 7;
  static constexpr const char16_t* document = u"Editor - Re%20port.doc";
  static constexpr const char16_t* file = u"C:\\out\\Re port.pdf";

 private:
  void answerAsLauncher() {
    SimulatedObject* const event = machine.objects.find(channel_ + u"_event");
    if (!event || !event->signalled) {
      return;
    }
    event->signalled = false;
    // A sender that went away after its call took record and answer with it.
    SimulatedObject* const end = machine.objects.find(channel_ + u"_end");
    if (!end) {
      return;
    }
    const SimulatedObject* const mapping = machine.objects.find(channel_ + u"_sm");
    const auto* const message = reinterpret_cast<const LauncherStruct*>(mapping->bytes.data());
    std::string words = message->command;
    for (const char* field : {message->printerName, message->outputFile, message->docName}) {
      if (*field) {
        words += std::string("|") + field;
      }
    }
    journal.note("launcher", wide(words));
    end->signalled = true;
  }

  const bool hasPrefixes_ = release != WindowsRelease::windows98 && release != WindowsRelease::nt4;
  const std::u16string channel_ = hasPrefixes_ ? u"Local\\tqpsend_pat" : u"tqpsend_pat";
  const std::u16string printerKey_ =
      std::u16string(release == WindowsRelease::nt4 ? u"HKU\\S-1-5-21" : u"HKCU") +
      u"\\Software\\Quillpress\\Office";
};

}  // namespace umpd
