// Whatever the settings and the document's name hold, naming ends with a path that fits into its
// room and, if it says so, is the name of no file. Input: a byte that says how many random numbers
// are alike; then five settings, the document's name and the path before, each up to a line feed, a
// byte for a character.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "umpd/SetFilename.h"
#include "umpd/platform/simulated/SimulatedPlatform.h"

namespace umpd {
namespace {

class Lines {
 public:
  explicit Lines(std::string_view text) : rest_(text) {}
  std::u16string next() {
    const std::string_view line = rest_.substr(0, rest_.find('\n'));
    rest_.remove_prefix(line.size() + (line.size() < rest_.size()));
    std::u16string text;
    for (const char c : line.substr(0, line.find('\0'))) {
      text += static_cast<unsigned char>(c);
    }
    return text;
  }

 private:
  std::string_view rest_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) {
    return 0;
  }
  Lines lines({reinterpret_cast<const char*>(data) + 1, size - 1});
  SimulatedPlatform simulated;
  PrinterSettings settings(simulated.platform);
  for (const char16_t* key : {u"SaveFilenameAction", u"TrimNameChar", u"DefaultExtension",
                              u"DefaultSaveDir", u"DefaultSaveFilename"}) {
    if (const std::u16string value = lines.next(); !value.empty()) {
      settings.params.set(key, value);
    }
  }
  const std::u16string docName = lines.next();
  simulated.machine.files.addFile(u"C:\\taken.pdf", "name\r\n");
  simulated.machine.random.planned.assign(data[0] % 16, 1);

  std::u16string out = lines.next();
  const bool named = SetFilename(settings).setOutputFilename(docName, out, savePathCapacity);
  if (out.size() >= savePathCapacity && named) {
    __builtin_trap();
  }
  if (named == simulated.machine.files.attributes(out).has_value()) {
    __builtin_trap();
  }
  if (simulated.openHandles() != 0) {
    __builtin_trap();
  }
  return 0;
}

}  // namespace umpd
