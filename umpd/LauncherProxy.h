// LauncherProxy: the driver's side of the launcher, the one program of the product that runs for
// each user. It is notified when a job starts and when its file is complete. A proxy is made anew
// for each step of a job.
#pragma once

#include <string_view>

#include "umpd/InterProcessComms.h"
#include "umpd/LauncherStruct.h"
#include "umpd/platform/Platform.h"

namespace umpd {

class LauncherProxy {
 public:
  explicit LauncherProxy(Platform& platform);
  virtual ~LauncherProxy();

  bool isLauncherRunning();
  // Hidden, from the driver directory. True if it runs or was started, which does not mean that it
  // listens yet.
  bool startLauncher();

  // True if the launcher took the message. A text of more than 259 narrow bytes is cut.
  bool startprint(std::u16string_view printerName);
  bool stopprint(std::u16string_view printerName, std::u16string_view docName,
                 std::u16string_view outputFile);

 private:
  LauncherStruct* openRecord();
  void store(char (&field)[launcherFieldSize], std::u16string_view text);

  Platform& platform_;
  InterProcessComms<LauncherStruct> channel_;
};

}  // namespace umpd
