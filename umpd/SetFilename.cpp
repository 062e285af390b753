// A name is made in four passes over one text: directory and name by one of the rules; escapes
// replaced; the whole shortened; the directory made. Then numbers are put in until no such file
// exists.
// Limits on length are those of the fields that the values were once kept in; they decide which
// values count, and are computed here within bounds.
#include "umpd/SetFilename.h"

#include <algorithm>
#include <optional>

#include "umpd/Folders.h"
#include "umpd/NameEscapes.h"
#include "umpd/PathParts.h"
#include "umpd/Trace.h"
#include "umpd/platform/WideText.h"

namespace umpd {
namespace {

// Settings of this many characters or more count as not set.
constexpr size_t filenameCapacity = 520;
constexpr size_t saveDirCapacity = 520;
constexpr size_t extensionLimit = 40;
// What the extension's own field holds of it.
constexpr size_t extensionField = 20;

constexpr int randomNameTries = 11;
// Of names that all exist: so many are made by numbers alone, and so many are tried in all.
constexpr int numberedNames = 100;
constexpr int namesInAll = 1000;

// How many characters of `size` are left after `used`; none if there are more.
size_t roomBehind(size_t size, size_t used) {
  return size > used ? size - used : 0;
}

// Cuts an extension of up to three letters off the name that starts at `start`. A dot in front of
// the name is no extension's. After an empty name it is the path before it that loses its end.
void cutExtension(std::u16string& path, size_t start) {
  constexpr size_t longestWithDot = 4;
  const size_t lowest = path.size() == start ? 0 : start + 1;
  const size_t dot = path.rfind(u'.');
  if (dot != path.npos && dot >= lowest && path.size() - dot <= longestWithDot) {
    path.resize(dot);
  }
}

// Only the characters from `start` on, `length` of them: the directory is the user's own text.
void replaceForbidden(std::u16string& path, size_t start, size_t length) {
  for (size_t i = start; i < path.size() && i - start < length; ++i) {
    if (!isAllowedNameChar(path[i])) {
      path[i] = u'_';
    }
  }
}

}  // namespace

SetFilename::~SetFilename() = default;

bool SetFilename::setOutputFilename(std::u16string_view docName, std::u16string& out, size_t size) {
  saveFilenameAction = static_cast<int32_t>(settings.getSettingInt(u"SaveFilenameAction", 0));
  makeOutputName(docName, out, size, saveFilenameAction);
  seedRandom();
  return leaveExistingNames(out, size);
}

// A title can be the name of a device, "con" or "Nul.doc": such a file exists in every directory,
// whatever number its name has. All jobs of the machine wait while this one looks for a name, so
// that the search must come to an end, and should find one: "_con.pdf" is no device.
bool SetFilename::leaveExistingNames(std::u16string& out, size_t size) const {
  const std::u16string first = out;
  for (int tried = 1; exists(out); ++tried) {
    if (tried == namesInAll) {
      return false;
    }
    if (tried == numberedNames) {
      out = first;
      out.insert(fileNameStart(first), 1, u'_');
      out.resize(std::min(out.size(), roomBehind(size, 1)));
    } else if (!numberName(out, size)) {
      return false;
    }
  }
  return true;
}

// Replaces what follows the last dot, whatever it is. False without a dot.
bool SetFilename::numberName(std::u16string& out, size_t size) const {
  const size_t dot = out.rfind(u'.');
  if (dot == out.npos) {
    return false;
  }
  std::u16string end(u".");
  end += decimalText(settings.platform.random.next());
  end += u".pdf";
  out.replace(dot, out.npos, end, 0, roomBehind(size, dot + 1));
  return true;
}

// Rules 0, 2, 3 and 5 differ for the launcher only.
bool SetFilename::makeOutputName(std::u16string_view docName, std::u16string& out, size_t size,
                                 int32_t action) {
  readSettings();
  switch (action) {
    case 0:
    case 2:
    case 3:
    case 5:
      makeNameOfDocument(docName, out, size);
      break;
    case 1:
      prefixDirectory(out, roomBehind(size, defaultFilename.size()));
      out += defaultFilename;
      break;
    case 4:
      makeRandomName(out, size);
      break;
    default:
      break;
  }
  out = decodeNameEscapes(out);
  shortenPath(out);
  return makeDirectoryOf(out);
}

void SetFilename::readSettings() {
  trimChar = static_cast<char16_t>(settings.getSettingInt(u"TrimNameChar", u'-'));
  defaultExtension = settingShorterThan(u"DefaultExtension", extensionLimit);
  if (defaultExtension.empty()) {
    defaultExtension = u".pdf";
  }
  defaultSaveDir = settingShorterThan(u"DefaultSaveDir", saveDirCapacity);
  // The directory follows the extension and is stored after it: an extension that fills its
  // field has the directory for its end.
  if (defaultExtension.size() >= extensionField) {
    defaultExtension.replace(extensionField, defaultExtension.npos, defaultSaveDir);
  }
  defaultFilename = readDefaultSaveFilename();
}

// A value that is too long counts as not set.
std::u16string SetFilename::settingShorterThan(std::u16string_view key, size_t limit) const {
  const std::optional<std::u16string> value = settings.params.find(key);
  return value && value->size() < limit ? *value : std::u16string();
}

// `@C:\name.txt` reads the name from that file's first line, each time anew. If there is no such
// file the text itself is the name.
std::u16string SetFilename::readDefaultSaveFilename() const {
  const std::u16string value = settingShorterThan(u"DefaultSaveFilename", filenameCapacity);
  if (!value.starts_with(u'@')) {
    return value;
  }
  std::optional<std::string> line =
      settings.platform.files.readLine(value.substr(1), filenameCapacity - 1);
  if (!line) {
    return value;
  }
  line->resize(line->find_last_not_of("\n\r\t ") + 1);
  return settings.platform.text.widen(*line);
}

// The user's default name serves a document without one, and is shaped like it.
void SetFilename::makeNameOfDocument(std::u16string_view docName, std::u16string& out,
                                     size_t size) {
  const std::u16string_view name = docName.empty() ? defaultFilename : docName;
  if (name.empty()) {
    makeRandomName(out, size);
  } else {
    prefixDirectory(out, size);
    shapeDocumentName(name, out, size);
  }
}

// The last try is taken whether the file exists or not: the collision rule looks at it again.
void SetFilename::makeRandomName(std::u16string& out, size_t size) {
  if (!settings.platform.process.randomSeeded.exchange(true)) {
    seedRandom();
  }
  for (int tries = 1;; ++tries) {
    const std::u16string text = decimalText(settings.platform.random.next());
    traceMessage(u"randstring [%s]\n", text);
    prefixDirectory(out, roomBehind(size, text.size() + defaultExtension.size()));
    out += text;
    out += defaultExtension;
    if (tries == randomNameTries || !exists(out)) {
      return;
    }
  }
}

void SetFilename::prefixDirectory(std::u16string& out, size_t size) const {
  out.clear();
  if (defaultSaveDir.empty()) {
    return;
  }
  out = defaultSaveDir.size() + 1 < size ? defaultSaveDir : u"C:\\";
  if (!endsInSeparator(out)) {
    out += u'\\';
  }
}

// Appends the shaped name to `path`.
void SetFilename::shapeDocumentName(std::u16string_view name, std::u16string& path,
                                    size_t size) const {
  const size_t start = path.size();
  path += withoutTitlePrefix(name).substr(0, roomBehind(size, start + defaultExtension.size() + 1));
  const size_t length = path.size() - start;
  cutExtension(path, start);
  path += defaultExtension;
  // As many as there were before the cut: that may reach into the extension.
  replaceForbidden(path, start, length);
}

// Up to the first character that ends a prefix, also where it belongs to the name itself.
std::u16string_view SetFilename::withoutTitlePrefix(std::u16string_view name) const {
  const size_t trim = trimChar == 0 ? name.npos : name.find(trimChar);
  if (trim == name.npos) {
    return name;
  }
  name.remove_prefix(trim + 1);
  return name.substr(std::min(name.find_first_not_of(u' '), name.size()));
}

// Without a separator after its first character the path itself is taken for the directory.
bool SetFilename::makeDirectoryOf(const std::u16string& path) const {
  const std::u16string directory = path.substr(0, lastSeparator(path, 1));
  return exists(directory) || makeDirectories(settings.platform, directory);
}

bool SetFilename::exists(const std::u16string& path) const {
  return settings.platform.files.attributes(path).has_value();
}

// Jobs of one moment in two threads get different numbers.
void SetFilename::seedRandom() const {
  const Platform& platform = settings.platform;
  platform.random.seed(platform.processes.currentThreadId() * platform.clock.tickCount());
}

}  // namespace umpd
