// SimulatedFiles, SimulatedProcesses: the files and programs of the simulated machine.
//
// Paths compare without regard to case, `/` counts as `\`, and a path without a drive or a server
// lies in the current directory. Drive C: exists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "umpd/platform/Platform.h"
#include "umpd/platform/simulated/Journal.h"
#include "umpd/platform/simulated/SimulatedObjects.h"

namespace umpd {

class SimulatedFiles : public Files {
 public:
  explicit SimulatedFiles(Journal& journal);

  FileHandle openForWriting(const std::u16string& path, Disposition disposition) override;
  bool write(FileHandle file, std::span<const std::byte> data, uint32_t& written) override;
  bool seekToEnd(FileHandle file) override;
  void close(FileHandle file) override;
  bool remove(const std::u16string& path) override;
  std::optional<uint32_t> attributes(const std::u16string& path) override;
  bool makeDirectory(const std::u16string& path) override;
  std::optional<std::string> readLine(const std::u16string& path, size_t limit) override;
  std::optional<std::u16string> specialFolder(SpecialFolder folder) override;
  std::optional<std::u16string> systemDirectory() override;

  // What a test arranges and looks at. Directories on the way are made.
  void addDirectory(const std::u16string& path);
  void addFile(const std::u16string& path, const std::string& content,
               uint32_t attributes = normalAttribute);
  // A file that another program has open and does not share.
  void lock(const std::u16string& path) { nodes_[normalized(path)].locked = true; }
  // None if there is no such file.
  std::optional<std::string> content(const std::u16string& path) const;
  bool isDirectory(const std::u16string& path) const;
  size_t openHandles() const { return handles_.size(); }

  static constexpr uint32_t readOnlyAttribute = 0x1;
  static constexpr uint32_t normalAttribute = 0x80;

  std::u16string currentDirectory = u"C:\\work";
  std::map<SpecialFolder, std::u16string> folders{
      {SpecialFolder::documents, u"C:\\Users\\pat\\Documents"},
      {SpecialFolder::applicationData, u"C:\\Users\\pat\\AppData\\Roaming"},
      {SpecialFolder::localApplicationData, u"C:\\Users\\pat\\AppData\\Local"}};
  std::u16string systemDirectoryPath = u"C:\\windows\\system32";
  // The most bytes that the disk still takes.
  size_t roomLeft = SIZE_MAX;

 private:
  struct Node {
    uint32_t attributes = normalAttribute;
    std::string content;
    bool locked = false;
  };
  struct Opened {
    std::u16string path;
    size_t position;
  };

  std::u16string normalized(const std::u16string& path) const;
  bool isOpen(const std::u16string& path) const;
  bool parentStands(const std::u16string& path) const;

  Journal& journal_;
  std::map<std::u16string, Node> nodes_;
  std::map<FileHandle, Opened> handles_;
};

class SimulatedProcesses : public Processes {
 public:
  SimulatedProcesses(Journal& journal, SimulatedObjects& objects)
      : journal_(journal), objects_(objects) {}

  OwnedObject create(const ProcessRequest& request) override;
  std::optional<uint32_t> exitCode(ObjectHandle process) override;
  uint32_t currentThreadId() override;
  bool isProtectedMode(FunctionAddress call) override;

  std::vector<ProcessRequest> started;
  // What a started program does, beginning with its start; it has ended when this comes back.
  std::function<void(const ProcessRequest&)> program;
  uint32_t programExitCode = 0;
  uint32_t threadId = 4711;
  bool protectedMode = false;

 private:
  Journal& journal_;
  SimulatedObjects& objects_;
  std::map<ObjectHandle, uint32_t> exitCodes_;
};

}  // namespace umpd
