#include "tests/umpd/PrintingMachine.h"

#include <algorithm>
#include <iterator>

#include "tests/umpd/Wide.h"
#include "umpd/LauncherStruct.h"

namespace {

bool hasPrefixes(WindowsRelease release) {
  return release != WindowsRelease::windows98 && release != WindowsRelease::nt4;
}

}  // namespace

PrintingMachine::PrintingMachine(WindowsRelease windowsRelease) : release(windowsRelease) {
  simulated.become(release);
  Sid sid;
  sid.valid = true;
  sid.authority[5] = 5;
  sid.subAuthorities = {21};
  machine.accounts.accounts = {{u"", u"pat", sid}};
  machine.registry.makeKey(u"HKU\\S-1-5-21");
  office.jobs = {{.jobId = jobNumber, .document = document, .statusText = {}, .position = 1}};
  machine.files.addDirectory(u"C:\\out");
  set(u"DefaultSaveDir", u"C:\\out");
  journal.before("wait", [this] { answerAsLauncher(); });
}

std::u16string PrintingMachine::channel() const {
  return hasPrefixes(release) ? u"Local\\tqpsend_pat" : u"tqpsend_pat";
}

std::u16string PrintingMachine::printerKey() const {
  const bool bySid = release == WindowsRelease::nt4;
  return std::u16string(bySid ? u"HKU\\S-1-5-21" : u"HKCU") + u"\\Software\\Quillpress\\Office";
}

void PrintingMachine::startLauncher() {
  machine.objects.holdElsewhere(SimulatedObject::Kind::mutex, channel() + u"_mutex");
  machine.objects.holdElsewhere(SimulatedObject::Kind::event, channel() + u"_event");
}

void PrintingMachine::launcherStartsOnDemand() {
  machine.processes.program = [this](const ProcessRequest&) { startLauncher(); };
}

void PrintingMachine::answerAsLauncher() {
  SimulatedObject* const event = machine.objects.find(channel() + u"_event");
  if (!event || !event->signalled) return;
  event->signalled = false;
  const SimulatedObject* const mapping = machine.objects.find(channel() + u"_sm");
  const auto* const message = reinterpret_cast<const LauncherStruct*>(mapping->bytes.data());
  std::string words = message->command;
  for (const char* field : {message->printerName, message->outputFile, message->docName})
    if (*field) words += std::string("|") + field;
  journal.note("launcher", wide(words));
  machine.objects.find(channel() + u"_end")->signalled = true;
}

void PrintingMachine::set(const std::u16string& setting, const std::u16string& value) {
  machine.registry.setText(printerKey(), setting, value);
}

std::u16string PrintingMachine::stored(const std::u16string& setting) const {
  return machine.registry.shown(printerKey(), setting);
}

std::string PrintingMachine::story() const {
  constexpr std::string_view told[] = {"createMutex",  "createProcess",  "launcher",
                                       "writePrinter", "openForWriting", "closeFile",
                                       "removeFile",   "setJob"};
  std::string story;
  for (const auto& [operation, detail] : journal.calls())
    if (std::ranges::find(told, operation) != std::end(told) || detail.ends_with(u"FinishPrintEv"))
      story += operation + (detail.empty() ? "" : " ") + narrow(detail) + "\n";
  return story;
}

std::string PrintingMachine::boxes() const {
  std::string all;
  for (const auto& box : machine.messages.boxes)
    all += narrow(box.caption) + "|" + narrow(box.text) + "|" + std::to_string(box.flags) + "\n";
  return all;
}

std::size_t PrintingMachine::leaks() const {
  const ProcessState& kept = simulated.platform.process;
  const std::size_t expected = 1u + static_cast<bool>(kept.domainControllerMapping) +
                               static_cast<bool>(kept.domainControllerView);
  return simulated.openHandles() - expected;
}

SimulatedObject* PrintingMachine::lock() {
  return machine.objects.find(hasPrefixes(release) ? u"Global\\umdriver" : u"umdriver");
}

bool PrintingMachine::lockIsFree() {
  // One whose release the machine refused is nobody's fault.
  return !lock() || lock()->depth == 0 || journal.pickedOperation() == "releaseMutex";
}
