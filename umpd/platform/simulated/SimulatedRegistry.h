// SimulatedRegistry, SimulatedProfiles: the hives and the profile files of the simulated machine.
//
// Hives are "HKCU", "HKLM" and "HKU"; a key's path begins with one. Names compare without regard to
// case. A handle allows what its access mask says: bit 1 to read values, bit 2 to write them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "umpd/platform/Platform.h"
#include "umpd/platform/simulated/Journal.h"

namespace umpd {

class SimulatedRegistry : public Registry {
 public:
  explicit SimulatedRegistry(Journal& journal) : journal_(journal) {}

  CreatedKey createKey(KeyHandle parent, const std::u16string& subkey, uint32_t access) override;
  OwnedKey openKey(KeyHandle parent, const std::u16string& subkey, uint32_t access) override;
  OwnedKey openCurrentUser(FunctionAddress call, uint32_t access) override;
  RegistryValue readValue(KeyHandle key, const std::u16string& name, size_t room) override;
  bool hasValue(KeyHandle key, const std::u16string& name) override;
  bool writeValue(KeyHandle key, const std::u16string& name, uint32_t type,
                  std::span<const std::byte> data) override;
  std::optional<KeyInfo> queryInfo(KeyHandle key) override;
  RegistryValue enumerateValue(KeyHandle key, uint32_t index, size_t nameRoom,
                               size_t dataRoom) override;
  void close(KeyHandle key) override;

  // What a test arranges and looks at.
  void makeKey(const std::u16string& path) { keys_.try_emplace(normalized(path)); }
  bool hasKey(const std::u16string& path) const { return keys_.count(normalized(path)) != 0; }
  void setText(const std::u16string& path, const std::u16string& name, const std::u16string& text);
  void setDword(const std::u16string& path, const std::u16string& name, uint32_t value);
  void setValue(const std::u16string& path, const std::u16string& name, uint32_t type,
                std::vector<std::byte> data);
  // Null if it is not there.
  const RegistryValue* value(const std::u16string& path, const std::u16string& name) const;
  // The value's text, or its number in decimal; "(none)" if it is not there.
  std::u16string shown(const std::u16string& path, const std::u16string& name) const;
  size_t openHandles() const { return handles_.size(); }

  // The hive that RegOpenCurrentUser opens; empty if the call fails.
  std::u16string threadUserHive = u"HKCU";
  // An access mask that RegOpenCurrentUser refuses.
  uint32_t refusedAccess = 0;

 private:
  struct Key {
    std::vector<RegistryValue> values;
  };
  struct Opened {
    std::u16string path;
    uint32_t access;
  };

  static std::u16string normalized(const std::u16string& path);
  std::optional<std::u16string> pathOf(KeyHandle key) const;
  std::optional<std::u16string> pathBelow(KeyHandle parent, const std::u16string& subkey) const;
  Key* keyFor(KeyHandle handle, uint32_t access);
  OwnedKey opened(const std::u16string& path, uint32_t access);

  Journal& journal_;
  std::map<std::u16string, Key> keys_{{u"hkcu", {}}, {u"hklm", {}}, {u"hku", {}}};
  std::map<KeyHandle, Opened> handles_;
};

class SimulatedProfiles : public ProfileFiles {
 public:
  explicit SimulatedProfiles(Journal& journal) : journal_(journal) {}

  uint32_t readInt(const std::u16string& path, const std::u16string& section,
                   const std::u16string& key, uint32_t defaultValue) override;
  std::u16string readSection(const std::u16string& path, const std::u16string& section,
                             size_t room) override;

  // Lines are `key=value` or whatever else a test puts there.
  void setSection(const std::u16string& path, const std::u16string& section,
                  std::vector<std::u16string> lines);

 private:
  const std::vector<std::u16string>* find(const std::u16string& path,
                                          const std::u16string& section) const;

  Journal& journal_;
  std::map<std::u16string, std::vector<std::u16string>> sections_;
};

}  // namespace umpd
