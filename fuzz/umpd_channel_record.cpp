// Whatever a job's names are, and whatever another program has left in the launcher's record, a
// message stays within its fields and each field ends. Input: a byte that says how large the shared
// memory is; a byte that it is full of; then printer, file and document, each up to a line feed, a
// byte for a character.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "umpd/LauncherProxy.h"
#include "umpd/platform/simulated/SimulatedPlatform.h"

namespace umpd {
namespace {

void require(bool condition) {
  if (!condition) {
    __builtin_trap();
  }
}

std::string nextLine(std::string_view& rest) {
  const std::string_view line = rest.substr(0, rest.find('\n'));
  rest.remove_prefix(line.size() + (line.size() < rest.size()));
  return std::string(line.substr(0, line.find('\0')));
}

std::u16string widened(const std::string& text) {
  std::u16string wide;
  for (const char c : text) {
    wide += static_cast<unsigned char>(c);
  }
  return wide;
}

// Begins with the text, as far as there is room for it, and ends within its room.
void requireField(const char* field, const std::string& text) {
  require(std::memchr(field, 0, launcherFieldSize) != nullptr);
  require(field == text.substr(0, launcherFieldSize - 1));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) {
    return 0;
  }
  const std::string base = "Local\\tqpsend_pat";
  SimulatedPlatform simulated;
  SimulatedObjects& objects = simulated.machine.objects;
  objects.holdElsewhere(SimulatedObject::Kind::mutex, widened(base + "_mutex"));
  objects.holdElsewhere(SimulatedObject::Kind::event, widened(base + "_event"));
  // From 128 bytes too few to 127 too many.
  const size_t room = sizeof(LauncherStruct) + data[0] - 128;
  std::vector<std::byte>& bytes =
      objects.holdElsewhere(SimulatedObject::Kind::mapping, widened(base + "_sm"), room).bytes;
  const std::byte filling{data[1]};
  bytes.assign(room, filling);
  simulated.machine.journal.before("wait",
                                   [&] { objects.find(widened(base + "_end"))->signalled = true; });

  std::string_view rest(reinterpret_cast<const char*>(data) + 2, size - 2);
  const std::string printer = nextLine(rest), file = nextLine(rest), document = nextLine(rest);
  LauncherProxy proxy(simulated.platform);
  const bool sent = proxy.startprint(widened(printer)) &&
                    proxy.stopprint(widened(printer), widened(document), widened(file));
  require(sent == (room >= sizeof(LauncherStruct)));
  if (!sent) {
    require(bytes == std::vector<std::byte>(room, filling));
    return 0;
  }
  LauncherStruct record;
  std::memcpy(&record, bytes.data(), sizeof record);
  requireField(record.command, "stopprint");
  requireField(record.printerName, printer);
  requireField(record.outputFile, file);
  requireField(record.docName, document);
  for (const char c : record.reserved) {
    require(std::byte(c) == filling);
  }
  for (const char c : record.reservedToo) {
    require(std::byte(c) == filling);
  }
  return 0;
}

}  // namespace umpd
