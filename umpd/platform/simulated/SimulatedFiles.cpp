#include "umpd/platform/simulated/SimulatedFiles.h"

#include <algorithm>

#include "umpd/WideText.h"

namespace {

constexpr std::uint32_t errorFileNotFound = 2;
constexpr std::uint32_t errorPathNotFound = 3;
constexpr std::uint32_t errorAccessDenied = 5;
constexpr std::uint32_t errorInvalidHandle = 6;
constexpr std::uint32_t errorSharingViolation = 32;
constexpr std::uint32_t errorDiskFull = 112;
constexpr std::uint32_t errorInvalidName = 123;
constexpr std::uint32_t errorAlreadyExists = 183;

constexpr std::size_t systemDirectoryLimit = 260;

bool isValidName(const std::u16string& path) {
  return std::none_of(path.begin(), path.end(), [](char16_t c) {
    return c < 32 || std::u16string_view(u"<>\"|?*").find(c) != std::u16string_view::npos;
  });
}

}  // namespace

SimulatedFiles::SimulatedFiles(Journal& shared) : journal(shared) {
  addDirectory(currentDirectory);
  addDirectory(systemDirectoryPath);
  for (const auto& [number, path] : folders) addDirectory(path);
}

std::u16string SimulatedFiles::normalized(const std::u16string& path) const {
  std::u16string result = foldCase(path);
  std::replace(result.begin(), result.end(), u'/', u'\\');
  const bool hasDrive = result.size() >= 2 && result[1] == u':';
  if (!hasDrive && !result.starts_with(u"\\\\"))
    result = foldCase(currentDirectory) + u'\\' + result;
  // Separators count once, but for the two in front of a server's name.
  for (std::size_t at = result.find(u"\\\\", 1); at != std::u16string::npos;
       at = result.find(u"\\\\", at))
    result.erase(at, 1);
  while (!result.empty() && result.back() == u'\\') result.pop_back();
  return result;
}

bool SimulatedFiles::isOpen(const std::u16string& path) const {
  return std::any_of(handles.begin(), handles.end(),
                     [&](const auto& each) { return each.second.path == path; });
}

bool SimulatedFiles::parentStands(const std::u16string& path) const {
  const auto separator = path.rfind(u'\\');
  if (separator == std::u16string::npos) return false;
  const auto parent = nodes.find(path.substr(0, separator));
  return parent != nodes.end() && (parent->second.attributes & attributeDirectory) != 0;
}

FileHandle SimulatedFiles::openForWriting(const std::u16string& path, Disposition disposition) {
  if (!journal.may("openForWriting", path)) return invalidFile;
  const std::u16string name = normalized(path);
  const auto found = nodes.find(name);
  std::uint32_t error = 0;
  if (path.empty() || !parentStands(name)) {
    error = errorPathNotFound;
  } else if (!isValidName(name)) {
    error = errorInvalidName;
  } else if (found != nodes.end()) {
    if ((found->second.attributes & (attributeDirectory | readOnlyAttribute)) != 0)
      error = errorAccessDenied;
    else if (found->second.locked || isOpen(name))
      error = errorSharingViolation;
  }
  if (error != 0) {
    journal.fails(error);
    return invalidFile;
  }
  Node& node = nodes[name];
  if (disposition == Disposition::createAlways) node.content.clear();
  const FileHandle handle{journal.newHandle()};
  handles[handle] = {name, 0};
  return handle;
}

bool SimulatedFiles::write(FileHandle file, std::span<const std::byte> data,
                           std::uint32_t& written) {
  written = 0;
  if (!journal.may("writeFile")) return false;
  const auto found = handles.find(file);
  if (found == handles.end()) return journal.fails(errorInvalidHandle);
  const auto taken = data.first(std::min(data.size(), roomLeft));
  roomLeft -= taken.size();
  std::string& content = nodes[found->second.path].content;
  std::size_t& position = found->second.position;
  content.resize(std::max(content.size(), position + taken.size()));
  for (const std::byte each : taken) content[position++] = static_cast<char>(each);
  written = static_cast<std::uint32_t>(taken.size());
  return taken.size() == data.size() || journal.fails(errorDiskFull);
}

bool SimulatedFiles::seekToEnd(FileHandle file) {
  if (!journal.may("seekToEnd")) return false;
  const auto found = handles.find(file);
  if (found == handles.end()) return journal.fails(errorInvalidHandle);
  found->second.position = nodes[found->second.path].content.size();
  return true;
}

void SimulatedFiles::close(FileHandle file) {
  journal.note("closeFile");
  handles.erase(file);
}

bool SimulatedFiles::remove(const std::u16string& path) {
  if (!journal.may("removeFile", path)) return false;
  const std::u16string name = normalized(path);
  const auto found = nodes.find(name);
  if (found == nodes.end()) return journal.fails(errorFileNotFound);
  if ((found->second.attributes & (attributeDirectory | readOnlyAttribute)) != 0)
    return journal.fails(errorAccessDenied);
  if (found->second.locked || isOpen(name)) return journal.fails(errorSharingViolation);
  nodes.erase(found);
  return true;
}

std::optional<std::uint32_t> SimulatedFiles::attributes(const std::u16string& path) {
  if (!journal.may("attributes", path)) return std::nullopt;
  const auto found = nodes.find(normalized(path));
  if (!path.empty() && found != nodes.end()) return found->second.attributes;
  journal.fails(path.empty() ? errorPathNotFound : errorFileNotFound);
  return std::nullopt;
}

bool SimulatedFiles::makeDirectory(const std::u16string& path) {
  if (!journal.may("makeDirectory", path)) return false;
  const std::u16string name = normalized(path);
  if (path.empty() || !parentStands(name)) return journal.fails(errorPathNotFound);
  if (nodes.count(name) != 0) return journal.fails(errorAlreadyExists);
  if (!isValidName(name)) return journal.fails(errorInvalidName);
  nodes[name].attributes = attributeDirectory;
  return true;
}

std::optional<std::string> SimulatedFiles::readLine(const std::u16string& path, std::size_t limit) {
  if (!journal.may("readLine", path)) return std::nullopt;
  const auto text = content(path);
  if (!text) {
    journal.fails(errorFileNotFound);
    return std::nullopt;
  }
  std::string line;
  for (std::size_t i = 0; i < text->size() && line.size() < limit; ++i) {
    // Text mode: a line ends in one character.
    if (text->compare(i, 2, "\r\n") == 0) continue;
    line += (*text)[i];
    if (line.back() == '\n') break;
  }
  return line.substr(0, line.find('\0'));
}

std::optional<std::u16string> SimulatedFiles::specialFolder(SpecialFolder folder) {
  if (!journal.may("specialFolder", decimalText(static_cast<std::uint32_t>(folder))))
    return std::nullopt;
  const auto found = folders.find(folder);
  if (found == folders.end()) return std::nullopt;
  return found->second;
}

std::optional<std::u16string> SimulatedFiles::systemDirectory() {
  if (!journal.may("systemDirectory")) return std::nullopt;
  if (systemDirectoryPath.size() >= systemDirectoryLimit) return std::nullopt;
  return systemDirectoryPath;
}

void SimulatedFiles::addDirectory(const std::u16string& path) {
  const std::u16string name = normalized(path);
  const std::size_t start = name.starts_with(u"\\\\") ? 2 : 0;
  for (std::size_t end = name.find(u'\\', start);; end = name.find(u'\\', end + 1)) {
    nodes[name.substr(0, end)].attributes = attributeDirectory;
    if (end == std::u16string::npos) break;
  }
}

void SimulatedFiles::addFile(const std::u16string& path, const std::string& content,
                             std::uint32_t attributes) {
  const std::u16string name = normalized(path);
  addDirectory(name.substr(0, name.rfind(u'\\')));
  nodes[name] = {attributes, content, false};
}

std::optional<std::string> SimulatedFiles::content(const std::u16string& path) const {
  const auto found = nodes.find(normalized(path));
  if (found == nodes.end() || (found->second.attributes & attributeDirectory) != 0)
    return std::nullopt;
  return found->second.content;
}

bool SimulatedFiles::isDirectory(const std::u16string& path) const {
  const auto found = nodes.find(normalized(path));
  return found != nodes.end() && (found->second.attributes & attributeDirectory) != 0;
}

OwnedObject SimulatedProcesses::create(const ProcessRequest& request) {
  if (!journal.may("createProcess", request.commandLine)) return {};
  started.push_back(request);
  if (program) program(request);
  auto process = std::make_shared<SimulatedObject>(SimulatedObject::Kind::process);
  process->signalled = true;
  OwnedObject handle = objects.adopt(std::move(process));
  exitCodes[handle.get()] = programExitCode;
  return handle;
}

std::optional<std::uint32_t> SimulatedProcesses::exitCode(ObjectHandle process) {
  if (!journal.may("exitCode")) return std::nullopt;
  const auto found = exitCodes.find(process);
  if (found == exitCodes.end()) {
    journal.fails(errorInvalidHandle);
    return std::nullopt;
  }
  return found->second;
}

std::uint32_t SimulatedProcesses::currentThreadId() {
  journal.note("currentThreadId");
  return threadId;
}

bool SimulatedProcesses::isProtectedMode(FunctionAddress /*call*/) {
  return journal.may("isProtectedMode") && protectedMode;
}
