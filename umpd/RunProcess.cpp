// Programs are started by a command line alone. Detached, they get no console of the printing
// program's.
#include "umpd/RunProcess.h"

#include <cstddef>

#include "umpd/Folders.h"
#include "umpd/ProductNames.h"
#include "umpd/Trace.h"

namespace umpd {
namespace {

constexpr uint32_t detachedAtNormalPriority = 0x08 | 0x20;

// The command line of the launcher that starts with the user's session; empty if none does.
std::u16string launcherOfSession(Platform& platform) {
  constexpr uint32_t access = 0x2001F;
  constexpr size_t room = 260;  // bytes
  const CreatedKey run = platform.registry.createKey(
      keyCurrentUser, u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", access);
  if (!run.key) {
    return {};
  }
  const RegistryValue value =
      platform.registry.readValue(run.key.get(), std::u16string(launcherFileName), room);
  return value.ok() ? value.text() : std::u16string();
}

}  // namespace

// An exit code that cannot be read leaves the caller's value as it is.
bool runProcess(Platform& platform, const std::u16string& commandLine,
                const std::u16string& directory, bool wait, uint32_t* exitCode,
                uint16_t showState) {
  traceMessage(u"about to execute [%s]\n", commandLine);
  ProcessRequest request{.commandLine = commandLine,
                         .directory = directory,
                         .creationFlags = detachedAtNormalPriority,
                         .showState = {}};
  if (showState != 0) {
    request.showState = showState == showStateHidden ? 0 : showState;
  }
  const OwnedObject process = platform.processes.create(request);
  if (!process) {
    platform.messages.debug(u"CreateProcess failed.  Cmd Line : " + commandLine + u"\n");
    return false;
  }
  if (wait) {
    platform.objects.wait(process.get(), noTimeLimit);
    if (exitCode) {
      *exitCode = platform.processes.exitCode(process.get()).value_or(*exitCode);
    }
  }
  return true;
}

// An old entry in the session's start-up list means that the user's part of the installation was
// never brought up to date.
void runSetupProgram(PrinterSettings& settings) {
  Platform& platform = settings.platform;
  if (launcherOfSession(platform).find(u"\\2\\tqpmsnd") == std::u16string::npos) {
    return;
  }
  const std::optional<std::u16string> program = driverFile(platform, setupFileName);
  if (!program) {
    traceMessage("execSetupProg getFilename failed\n");
    return;
  }
  const std::u16string commandLine =
      *program + u" -printer=\"" + settings.printerName + u"\" -installStartmenu";
  runProcess(platform, commandLine, {}, true, nullptr, 0);
}

}  // namespace umpd
