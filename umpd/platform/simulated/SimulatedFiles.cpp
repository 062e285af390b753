// Files are nodes of one map under their full paths, in lower case and with backslashes. A
// directory is a node as well; nothing is made below one that does not exist.
#include "umpd/platform/simulated/SimulatedFiles.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>

#include "umpd/platform/WideText.h"

namespace umpd {
namespace {

constexpr uint32_t errorFileNotFound = 2;
constexpr uint32_t errorPathNotFound = 3;
constexpr uint32_t errorAccessDenied = 5;
constexpr uint32_t errorInvalidHandle = 6;
constexpr uint32_t errorSharingViolation = 32;
constexpr uint32_t errorDiskFull = 112;
constexpr uint32_t errorInvalidName = 123;
constexpr uint32_t errorAlreadyExists = 183;

constexpr size_t systemDirectoryLimit = 260;

// What the system answers for a device.
constexpr uint32_t archiveAttribute = 0x20;

// Devices have names in every directory, whatever extension follows: "C:\\out\\con.pdf" is one.
bool isDeviceName(std::u16string_view path) {
  static const std::set<std::u16string_view> devices = {
      u"con",  u"prn",  u"aux",  u"nul",  u"com1", u"com2", u"com3", u"com4",
      u"com5", u"com6", u"com7", u"com8", u"com9", u"lpt1", u"lpt2", u"lpt3",
      u"lpt4", u"lpt5", u"lpt6", u"lpt7", u"lpt8", u"lpt9"};
  std::u16string_view name = path.substr(path.rfind(u'\\') + 1);
  name.remove_prefix(name.size() > 1 && name[1] == u':' ? 2 : 0);
  name = name.substr(0, name.find_first_of(u".:"));
  name = name.substr(0, name.find_last_not_of(u' ') + 1);
  return devices.count(name) != 0;
}

bool isValidName(const std::u16string& path) {
  return std::none_of(path.begin(), path.end(), [](char16_t c) {
    return c < 32 || std::u16string_view(u"<>\"|?*").find(c) != std::u16string_view::npos;
  });
}

}  // namespace

SimulatedFiles::SimulatedFiles(Journal& journal) : journal_(journal) {
  addDirectory(currentDirectory);
  addDirectory(systemDirectoryPath);
  for (const auto& [number, path] : folders) {
    addDirectory(path);
  }
}

// What different spellings of a path have in common.
std::u16string SimulatedFiles::normalized(const std::u16string& path) const {
  std::u16string result = foldCase(path);
  std::replace(result.begin(), result.end(), u'/', u'\\');
  const bool hasDrive = result.size() >= 2 && result[1] == u':';
  if (!hasDrive && !result.starts_with(u"\\\\")) {
    result = foldCase(currentDirectory) + u'\\' + result;
  }
  // Separators count once, but for the two in front of a server's name.
  for (size_t at = result.find(u"\\\\", 1); at != std::u16string::npos;
       at = result.find(u"\\\\", at)) {
    result.erase(at, 1);
  }
  while (!result.empty() && result.back() == u'\\') {
    result.pop_back();
  }
  return result;
}

// Others may read a file that is being written, but not write or remove it.
bool SimulatedFiles::isOpen(const std::u16string& path) const {
  return std::any_of(handles_.begin(), handles_.end(),
                     [&](const auto& each) { return each.second.path == path; });
}

bool SimulatedFiles::parentStands(const std::u16string& path) const {
  const auto separator = path.rfind(u'\\');
  if (separator == std::u16string::npos) {
    return false;
  }
  const auto parent = nodes_.find(path.substr(0, separator));
  return parent != nodes_.end() && (parent->second.attributes & attributeDirectory) != 0;
}

// Errors come in the order in which the system finds them. A file that is created anew is emptied
// at once, before anything is written.
FileHandle SimulatedFiles::openForWriting(const std::u16string& path, Disposition disposition) {
  if (!journal_.may("openForWriting", path)) {
    return invalidFile;
  }
  const std::u16string name = normalized(path);
  const auto found = nodes_.find(name);
  uint32_t error = 0;
  if (path.empty() || !parentStands(name)) {
    error = errorPathNotFound;
  } else if (!isValidName(name)) {
    error = errorInvalidName;
  } else if (found != nodes_.end()) {
    if ((found->second.attributes & (attributeDirectory | readOnlyAttribute)) != 0) {
      error = errorAccessDenied;
    } else if (found->second.locked || isOpen(name)) {
      error = errorSharingViolation;
    }
  }
  if (error != 0) {
    journal_.fails(error);
    return invalidFile;
  }
  Node& node = nodes_[name];
  if (disposition == Disposition::createAlways) {
    node.content.clear();
  }
  const FileHandle handle{journal_.newHandle()};
  handles_[handle] = {name, 0};
  return handle;
}

// A full disk takes what it has room for.
bool SimulatedFiles::write(FileHandle file, std::span<const std::byte> data, uint32_t& written) {
  written = 0;
  if (!journal_.may("writeFile")) {
    return false;
  }
  const auto found = handles_.find(file);
  if (found == handles_.end()) {
    return journal_.fails(errorInvalidHandle);
  }
  const auto taken = data.first(std::min(data.size(), roomLeft));
  roomLeft -= taken.size();
  std::string& content = nodes_[found->second.path].content;
  size_t& position = found->second.position;
  content.resize(std::max(content.size(), position + taken.size()));
  for (const std::byte each : taken) {
    content[position++] = static_cast<char>(each);
  }
  written = static_cast<uint32_t>(taken.size());
  return taken.size() == data.size() || journal_.fails(errorDiskFull);
}

bool SimulatedFiles::seekToEnd(FileHandle file) {
  if (!journal_.may("seekToEnd")) {
    return false;
  }
  const auto found = handles_.find(file);
  if (found == handles_.end()) {
    return journal_.fails(errorInvalidHandle);
  }
  found->second.position = nodes_[found->second.path].content.size();
  return true;
}

// invalidFile is closed as well, and nothing happens.
void SimulatedFiles::close(FileHandle file) {
  journal_.noteReturn("closeFile");
  handles_.erase(file);
}

bool SimulatedFiles::remove(const std::u16string& path) {
  if (!journal_.may("removeFile", path)) {
    return false;
  }
  const std::u16string name = normalized(path);
  const auto found = nodes_.find(name);
  if (found == nodes_.end()) {
    return journal_.fails(errorFileNotFound);
  }
  if ((found->second.attributes & (attributeDirectory | readOnlyAttribute)) != 0) {
    return journal_.fails(errorAccessDenied);
  }
  if (found->second.locked || isOpen(name)) {
    return journal_.fails(errorSharingViolation);
  }
  nodes_.erase(found);
  return true;
}

std::optional<uint32_t> SimulatedFiles::attributes(const std::u16string& path) {
  if (!journal_.may("attributes", path)) {
    return std::nullopt;
  }
  const std::u16string name = normalized(path);
  const auto found = nodes_.find(name);
  if (!path.empty() && found != nodes_.end()) {
    return found->second.attributes;
  }
  if (isDeviceName(name)) {
    return archiveAttribute;
  }
  journal_.fails(path.empty() ? errorPathNotFound : errorFileNotFound);
  return std::nullopt;
}

// One level: its parent has to exist.
bool SimulatedFiles::makeDirectory(const std::u16string& path) {
  if (!journal_.may("makeDirectory", path)) {
    return false;
  }
  const std::u16string name = normalized(path);
  if (path.empty() || !parentStands(name)) {
    return journal_.fails(errorPathNotFound);
  }
  if (nodes_.count(name) != 0) {
    return journal_.fails(errorAlreadyExists);
  }
  if (!isValidName(name)) {
    return journal_.fails(errorInvalidName);
  }
  nodes_[name].attributes = attributeDirectory;
  return true;
}

std::optional<std::string> SimulatedFiles::readLine(const std::u16string& path, size_t limit) {
  if (!journal_.may("readLine", path)) {
    return std::nullopt;
  }
  const auto text = content(path);
  if (!text) {
    journal_.fails(errorFileNotFound);
    return std::nullopt;
  }
  std::string line;
  for (size_t i = 0; i < text->size() && line.size() < limit; ++i) {
    // Text mode: a line ends in one character.
    if (text->compare(i, 2, "\r\n") == 0) {
      continue;
    }
    line += (*text)[i];
    if (line.back() == '\n') {
      break;
    }
  }
  return line.substr(0, line.find('\0'));
}

std::optional<std::u16string> SimulatedFiles::specialFolder(SpecialFolder folder) {
  if (!journal_.may("specialFolder", decimalText(static_cast<uint32_t>(folder)))) {
    return std::nullopt;
  }
  const auto found = folders.find(folder);
  if (found == folders.end()) {
    return std::nullopt;
  }
  return found->second;
}

std::optional<std::u16string> SimulatedFiles::systemDirectory() {
  if (!journal_.may("systemDirectory")) {
    return std::nullopt;
  }
  if (systemDirectoryPath.size() >= systemDirectoryLimit) {
    return std::nullopt;
  }
  return systemDirectoryPath;
}

// With all directories on its way.
void SimulatedFiles::addDirectory(const std::u16string& path) {
  const std::u16string name = normalized(path);
  const size_t start = name.starts_with(u"\\\\") ? 2 : 0;
  for (size_t end = name.find(u'\\', start);; end = name.find(u'\\', end + 1)) {
    nodes_[name.substr(0, end)].attributes = attributeDirectory;
    if (end == std::u16string::npos) {
      break;
    }
  }
}

void SimulatedFiles::addFile(const std::u16string& path, const std::string& content,
                             uint32_t attributes) {
  const std::u16string name = normalized(path);
  addDirectory(name.substr(0, name.rfind(u'\\')));
  nodes_[name] = {attributes, content, false};
}

std::optional<std::string> SimulatedFiles::content(const std::u16string& path) const {
  const auto found = nodes_.find(normalized(path));
  if (found == nodes_.end() || (found->second.attributes & attributeDirectory) != 0) {
    return std::nullopt;
  }
  return found->second.content;
}

bool SimulatedFiles::isDirectory(const std::u16string& path) const {
  const auto found = nodes_.find(normalized(path));
  return found != nodes_.end() && (found->second.attributes & attributeDirectory) != 0;
}

// The program runs to its end within this call.
OwnedObject SimulatedProcesses::create(const ProcessRequest& request) {
  if (!journal_.may("createProcess", request.commandLine)) {
    return {};
  }
  started.push_back(request);
  if (program) {
    program(request);
  }
  auto process = std::make_shared<SimulatedObject>(SimulatedObject::Kind::process);
  process->signalled = true;
  OwnedObject handle = objects_.adopt(std::move(process));
  exitCodes_[handle.get()] = programExitCode;
  return handle;
}

std::optional<uint32_t> SimulatedProcesses::exitCode(ObjectHandle process) {
  if (!journal_.may("exitCode")) {
    return std::nullopt;
  }
  const auto found = exitCodes_.find(process);
  if (found == exitCodes_.end()) {
    journal_.fails(errorInvalidHandle);
    return std::nullopt;
  }
  return found->second;
}

uint32_t SimulatedProcesses::currentThreadId() {
  journal_.note("currentThreadId");
  return threadId;
}

bool SimulatedProcesses::isProtectedMode(FunctionAddress /*call*/) {
  return journal_.may("isProtectedMode") && protectedMode;
}

}  // namespace umpd
