#include "umpd/LauncherProxy.h"

#include <cstring>
#include <string>

#include "umpd/Folders.h"
#include "umpd/Report.h"

LauncherProxy::LauncherProxy(Platform& machine)
    : platform(machine), channel(machine, u"tqpsend", noTimeLimit) {}

LauncherProxy::~LauncherProxy() = default;

bool LauncherProxy::isLauncherRunning() {
  return channel.isReceiverReady();
}

bool LauncherProxy::startLauncher() {
  if (isLauncherRunning()) return true;
  const std::optional<std::u16string> program = driverFile(platform, u"tqpmsnd.exe");
  if (!program) return false;
  constexpr std::uint16_t hidden = 0;
  return static_cast<bool>(platform.processes.create(
      {.commandLine = *program, .directory = {}, .creationFlags = 0, .showState = hidden}));
}

// The fields of the other message keep what stands in them.
bool LauncherProxy::startprint(std::u16string_view printerName) {
  LauncherStruct* record = openRecord();
  if (!record) return false;
  store(record->printerName, printerName);
  store(record->command, u"startprint");
  return channel.sendMsg();
}

bool LauncherProxy::stopprint(std::u16string_view printerName, std::u16string_view docName,
                              std::u16string_view outputFile) {
  LauncherStruct* record = openRecord();
  if (!record) return false;
  store(record->printerName, printerName);
  store(record->docName, docName);
  store(record->outputFile, outputFile);
  store(record->command, u"stopprint");
  return channel.sendMsg();
}

LauncherStruct* LauncherProxy::openRecord() {
  LauncherStruct* record = channel.openSharedMemory();
  if (!record) traceMessage("Aquire failed\n");
  return record;
}

// What stands behind the text's terminator stays.
void LauncherProxy::store(char (&field)[launcherFieldSize], std::u16string_view text) {
  const std::string narrow =
      platform.text.narrow(std::u16string(text)).substr(0, launcherFieldSize - 1);
  std::memcpy(field, narrow.c_str(), narrow.size() + 1);
}
