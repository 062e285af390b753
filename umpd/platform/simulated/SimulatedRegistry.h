// SimulatedRegistry, SimulatedProfiles: the hives and the profile files of the simulated machine.
//
// Hives are "HKCU", "HKLM" and "HKU"; a key's path begins with one. Names compare without regard to
// case. A handle allows what its access mask says: bit 1 to read values, bit 2 to write them.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "umpd/platform/Platform.h"
#include "umpd/platform/simulated/Journal.h"

class SimulatedRegistry : public Registry {
 public:
  explicit SimulatedRegistry(Journal& shared) : journal(shared) {}

  CreatedKey createKey(KeyHandle parent, const std::u16string& subkey,
                       std::uint32_t access) override;
  OwnedKey openKey(KeyHandle parent, const std::u16string& subkey, std::uint32_t access) override;
  OwnedKey openCurrentUser(FunctionAddress call, std::uint32_t access) override;
  RegistryValue readValue(KeyHandle key, const std::u16string& name, std::size_t room) override;
  bool hasValue(KeyHandle key, const std::u16string& name) override;
  bool writeValue(KeyHandle key, const std::u16string& name, std::uint32_t type,
                  std::span<const std::byte> data) override;
  std::optional<KeyInfo> queryInfo(KeyHandle key) override;
  RegistryValue enumerateValue(KeyHandle key, std::uint32_t index, std::size_t nameRoom,
                               std::size_t dataRoom) override;
  void close(KeyHandle key) override;

  // What a test arranges and looks at.
  void makeKey(const std::u16string& path) { keys.try_emplace(normalized(path)); }
  bool hasKey(const std::u16string& path) const { return keys.count(normalized(path)) != 0; }
  void setText(const std::u16string& path, const std::u16string& name, const std::u16string& text);
  void setDword(const std::u16string& path, const std::u16string& name, std::uint32_t value);
  void setValue(const std::u16string& path, const std::u16string& name, std::uint32_t type,
                std::vector<std::byte> data);
  // Null if it is not there.
  const RegistryValue* value(const std::u16string& path, const std::u16string& name) const;
  // The value's text, or its number in decimal; "(none)" if it is not there.
  std::u16string shown(const std::u16string& path, const std::u16string& name) const;
  std::size_t openHandles() const { return handles.size(); }

  // The hive that RegOpenCurrentUser opens; empty if the call fails.
  std::u16string threadUserHive = u"HKCU";
  // An access mask that RegOpenCurrentUser refuses.
  std::uint32_t refusedAccess = 0;

 private:
  struct Key {
    std::vector<RegistryValue> values;
  };
  struct Opened {
    std::u16string path;
    std::uint32_t access;
  };

  static std::u16string normalized(const std::u16string& path);
  std::optional<std::u16string> pathOf(KeyHandle key) const;
  std::optional<std::u16string> pathBelow(KeyHandle parent, const std::u16string& subkey) const;
  Key* keyFor(KeyHandle handle, std::uint32_t access);
  OwnedKey opened(const std::u16string& path, std::uint32_t access);

  Journal& journal;
  std::map<std::u16string, Key> keys{{u"hkcu", {}}, {u"hklm", {}}, {u"hku", {}}};
  std::map<KeyHandle, Opened> handles;
};

class SimulatedProfiles : public ProfileFiles {
 public:
  explicit SimulatedProfiles(Journal& shared) : journal(shared) {}

  std::uint32_t readInt(const std::u16string& path, const std::u16string& section,
                        const std::u16string& key, std::uint32_t defaultValue) override;
  std::u16string readSection(const std::u16string& path, const std::u16string& section,
                             std::size_t room) override;

  // Lines are `key=value` or whatever else a test puts there.
  void setSection(const std::u16string& path, const std::u16string& section,
                  std::vector<std::u16string> lines);

 private:
  const std::vector<std::u16string>* find(const std::u16string& path,
                                          const std::u16string& section) const;

  Journal& journal;
  std::map<std::u16string, std::vector<std::u16string>> sections;
};
