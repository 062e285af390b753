// SetFilename: names the output file of a job (and sets no other name). From the document's name
// and the printer's settings it makes one path, makes the path's directory if it is missing, and
// chooses a name that no file has.
//
// A document's name is often a title such as "Editor - Report.doc": the prefix goes, the old
// extension goes, and what a file system does not accept becomes `_`. Start at setOutputFilename.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "umpd/PrinterSettings.h"

namespace umpd {

// The room for a job's output path in characters, terminator included.
inline constexpr size_t savePathCapacity = 780;

// One attempt at a name. `size` is the room for the whole path, terminator included.
class SetFilename {
 public:
  explicit SetFilename(const PrinterSettings& theSettings) : settings(theSettings) {}
  virtual ~SetFilename();

  // True if `out` is the name of a file that does not exist. False if it exists and no other name
  // can be made of it, because it has no dot or because all that were tried exist. An action that
  // is no rule only decodes and shortens what `out` came with.
  bool setOutputFilename(std::u16string_view docName, std::u16string& out, size_t size);

  // The name by one of the rules 0 to 5, whether or not the file exists. True if its directory
  // exists.
  bool makeOutputName(std::u16string_view docName, std::u16string& out, size_t size,
                      int32_t action);

 private:
  bool leaveExistingNames(std::u16string& out, size_t size) const;
  bool numberName(std::u16string& out, size_t size) const;
  void readSettings();
  std::u16string settingShorterThan(std::u16string_view key, size_t limit) const;
  std::u16string readDefaultSaveFilename() const;
  void makeNameOfDocument(std::u16string_view docName, std::u16string& out, size_t size);
  void makeRandomName(std::u16string& out, size_t size);
  // `size` less what is known to follow.
  void prefixDirectory(std::u16string& out, size_t size) const;
  void shapeDocumentName(std::u16string_view name, std::u16string& path, size_t size) const;
  std::u16string_view withoutTitlePrefix(std::u16string_view name) const;
  bool makeDirectoryOf(const std::u16string& path) const;
  bool exists(const std::u16string& path) const;
  void seedRandom() const;

  const PrinterSettings& settings;
  int32_t saveFilenameAction = 0;
  char16_t trimChar = u'-';  // 0 trims nothing
  std::u16string defaultFilename;
  std::u16string defaultExtension;
  std::u16string defaultSaveDir;
};

}  // namespace umpd
