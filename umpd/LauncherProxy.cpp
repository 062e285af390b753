// A message is the record's fields filled in place, the command last. What the launcher cannot see
// in a field of this message is left from the one before.
#include "umpd/LauncherProxy.h"

#include <cstdint>
#include <cstring>
#include <string>

#include "umpd/Folders.h"
#include "umpd/ProductNames.h"
#include "umpd/Trace.h"

namespace umpd {

LauncherProxy::LauncherProxy(Platform& platform)
    : platform_(platform), channel_(platform, u"tqpsend", noTimeLimit) {}

LauncherProxy::~LauncherProxy() = default;

bool LauncherProxy::isLauncherRunning() {
  return channel_.isReceiverReady();
}

// By its full path: the current directory is the printing program's.
bool LauncherProxy::startLauncher() {
  // It may have come up since the caller looked.
  if (isLauncherRunning()) {
    return true;
  }
  const std::optional<std::u16string> program = driverFile(platform_, launcherFileName);
  if (!program) {
    return false;
  }
  constexpr uint16_t hidden = 0;
  return static_cast<bool>(platform_.processes.create(
      {.commandLine = *program, .directory = {}, .creationFlags = 0, .showState = hidden}));
}

// The fields of the other message keep their text.
bool LauncherProxy::startprint(std::u16string_view printerName) {
  LauncherStruct* record = openRecord();
  if (!record) {
    return false;
  }
  store(record->printerName, printerName);
  store(record->command, u"startprint");
  return channel_.sendMsg();
}

bool LauncherProxy::stopprint(std::u16string_view printerName, std::u16string_view docName,
                              std::u16string_view outputFile) {
  LauncherStruct* record = openRecord();
  if (!record) {
    return false;
  }
  store(record->printerName, printerName);
  store(record->docName, docName);
  store(record->outputFile, outputFile);
  store(record->command, u"stopprint");
  return channel_.sendMsg();
}

LauncherStruct* LauncherProxy::openRecord() {
  LauncherStruct* record = channel_.openSharedMemory();
  if (!record) {
    traceMessage("Aquire failed\n");
  }
  return record;
}

// What follows the text's terminator is left as it is.
void LauncherProxy::store(char (&field)[launcherFieldSize], std::u16string_view text) {
  const std::string narrow =
      platform_.text.narrow(std::u16string(text)).substr(0, launcherFieldSize - 1);
  std::memcpy(field, narrow.c_str(), narrow.size() + 1);
}

}  // namespace umpd
