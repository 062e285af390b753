#include "tools/quillpress/FrontEnd.h"

#include <charconv>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "umpd/DocInfo.h"
#include "umpd/PrinterSettings.h"
#include "umpd/SetFilename.h"
#include "umpd/platform/simulated/SimulatedPlatform.h"

namespace quillpress {
namespace {

constexpr const char16_t* printerName = u"Tarnwick Quillpress";
constexpr const char16_t* printerKey = u"HKCU\\Software\\Quillpress\\Tarnwick Quillpress";

std::u16string wide(const std::string& text) {
  return std::filesystem::path(std::u8string(text.begin(), text.end())).u16string();
}

std::string utf8(const std::u16string& text) {
  const std::u8string narrow = std::filesystem::path(text).u8string();
  return {narrow.begin(), narrow.end()};
}

// A machine with the product's printer on it, whose settings are those that are given.
class Machine {
 public:
  explicit Machine(const PrinterSettingList& settings) {
    simulated_.machine.clock.time = static_cast<int64_t>(std::time(nullptr));
    for (const auto& [key, value] : settings) {
      set(key, value);
    }
    printer_.emplace(simulated_.platform);
    printer_->setPrinterName(printerName);
    printer_->loadSettings();
  }

  void addFile(const std::string& path) { simulated_.machine.files.addFile(wide(path), ""); }
  umpd::PrinterSettings& printer() { return *printer_; }

 private:
  // As the product stores them: a number is a DWORD.
  void set(const std::string& key, const std::string& value) {
    uint32_t number = 0;
    const auto [rest, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    auto& registry = simulated_.machine.registry;
    if (error == std::errc() && rest == value.data() + value.size()) {
      registry.setDword(printerKey, wide(key), number);
    } else {
      registry.setText(printerKey, wide(key), wide(value));
    }
  }

  umpd::SimulatedPlatform simulated_;
  std::optional<umpd::PrinterSettings> printer_;
};

}  // namespace

std::optional<std::string> outputNameOf(const std::string& title,
                                        const PrinterSettingList& settings,
                                        const std::vector<std::string>& existing) {
  Machine machine(settings);
  for (const std::string& path : existing) {
    machine.addFile(path);
  }
  std::u16string name;
  if (!umpd::SetFilename(machine.printer())
           .setOutputFilename(wide(title), name, umpd::savePathCapacity)) {
    return std::nullopt;
  }
  return utf8(name);
}

std::string xmpPacketOf(const std::string& title, const PrinterSettingList& settings) {
  Machine machine(settings);
  return utf8(umpd::makeXmp(machine.printer(), wide(title)));
}

}  // namespace quillpress
