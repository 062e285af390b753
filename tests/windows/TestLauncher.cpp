// The program that the library starts as tqpmsnd.exe: answers every message and keeps a log of them
// beside itself. It ends when it is told to, or a minute after the last message.
#include <filesystem>
#include <fstream>

#include "tests/windows/Receiver.h"
#include "tests/windows/TestLauncher.h"

int main() {
  umpd::Receiver receiver;
  const HANDLE quit = CreateEventW(nullptr, TRUE, FALSE, launcherQuitEvent);
  wchar_t program[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  std::ofstream log(std::filesystem::path(program).replace_extension(L".log"),
                    std::ios::app | std::ios::binary);
  while (const auto message = receiver.receive(60'000, quit)) {
    log << *message << '\n' << std::flush;
    receiver.answer();
  }
}
