// PrintingMachine: a simulated machine on which a job can be printed. It has the printer "Office"
// with one job in its queue, and a launcher that writes what it is told into the journal.
#pragma once

#include <string>
#include <string_view>

#include "umpd/JobRecords.h"
#include "umpd/platform/simulated/SimulatedPlatform.h"

class PrintingMachine {
 public:
  explicit PrintingMachine(WindowsRelease windowsRelease);

  // Now, or when it is started as a program.
  void startLauncher();
  void launcherStartsOnDemand();
  void set(const std::u16string& setting, const std::u16string& value);
  std::u16string stored(const std::u16string& setting) const;

  // What a job did that others can see, an operation a line.
  std::string story() const;
  // "caption|text|flags" of each box, an "\n" behind each.
  std::string boxes() const;
  // Beside what the process keeps for all its life and the handle that the test has.
  std::size_t leaks() const;
  bool lockIsFree();
  SimulatedObject* lock();

  WindowsRelease release;
  SimulatedPlatform simulated;
  SimulatedParts& machine = simulated.machine;
  Journal& journal = machine.journal;
  SimulatedPrinter& office = machine.spooler.add(u"Office", u"QP1:");
  PrinterHandle officeHandle = machine.spooler.handleOf(office);
  JobRecords records{simulated.platform};

  static constexpr std::uint32_t jobNumber = 7;
  static constexpr const char16_t* document = u"Editor - Re%20port.doc";
  static constexpr const char16_t* file = u"C:\\out\\Re port.pdf";

 private:
  void answerAsLauncher();
  std::u16string channel() const;
  std::u16string printerKey() const;
};
