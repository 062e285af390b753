// Keys are nodes of one map under their full paths in lower case; a key's values keep the order in
// which they were made, as the system's enumeration mostly shows them.
#include "umpd/platform/simulated/SimulatedRegistry.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "umpd/platform/WideText.h"

namespace umpd {
namespace {

constexpr uint32_t queryValueRight = 1;
constexpr uint32_t setValueRight = 2;
// Of one part of a path.
constexpr size_t keyNameLimit = 255;

RegistryValue answered(RegistryAnswer answer) {
  RegistryValue value;
  value.answer = answer;
  return value;
}

std::vector<std::byte> copied(std::span<const std::byte> data) {
  return {data.begin(), data.end()};
}

}  // namespace

std::u16string SimulatedRegistry::normalized(const std::u16string& path) {
  std::u16string result;
  for (const char16_t c : foldCase(path)) {
    if (c != u'\\' || (!result.empty() && result.back() != u'\\')) {
      result += c;
    }
  }
  while (!result.empty() && result.back() == u'\\') {
    result.pop_back();
  }
  return result;
}

// The hives have handles that every process knows.
std::optional<std::u16string> SimulatedRegistry::pathOf(KeyHandle key) const {
  if (key == keyCurrentUser) {
    return u"hkcu";
  }
  if (key == keyLocalMachine) {
    return u"hklm";
  }
  if (key == keyUsers) {
    return u"hku";
  }
  const auto found = handles_.find(key);
  if (found == handles_.end()) {
    return std::nullopt;
  }
  return found->second.path;
}

std::optional<std::u16string> SimulatedRegistry::pathBelow(KeyHandle parent,
                                                           const std::u16string& subkey) const {
  const auto path = pathOf(parent);
  if (!path) {
    return std::nullopt;
  }
  return normalized(*path + u'\\' + subkey);
}

OwnedKey SimulatedRegistry::opened(const std::u16string& path, uint32_t access) {
  const KeyHandle handle{journal_.newHandle()};
  handles_[handle] = {path, access};
  return OwnedKey(*this, handle);
}

// With all keys on the way. The last part of a path may have 255 characters.
CreatedKey SimulatedRegistry::createKey(KeyHandle parent, const std::u16string& subkey,
                                        uint32_t access) {
  if (!journal_.may("createKey", subkey)) {
    return {};
  }
  const auto path = pathBelow(parent, subkey);
  if (!path || path->size() - path->rfind(u'\\') > keyNameLimit + 1) {
    return {};
  }
  const bool created = keys_.count(*path) == 0;
  for (size_t end = path->find(u'\\'); end != std::u16string::npos;
       end = path->find(u'\\', end + 1)) {
    keys_.try_emplace(path->substr(0, end));
  }
  keys_.try_emplace(*path);
  return {opened(*path, access), created};
}

OwnedKey SimulatedRegistry::openKey(KeyHandle parent, const std::u16string& subkey,
                                    uint32_t access) {
  if (!journal_.may("openKey", subkey)) {
    return {};
  }
  const auto path = pathBelow(parent, subkey);
  if (!path || keys_.count(*path) == 0) {
    return {};
  }
  return opened(*path, access);
}

// The user's hive always exists.
OwnedKey SimulatedRegistry::openCurrentUser(FunctionAddress /*call*/, uint32_t access) {
  if (!journal_.may("openCurrentUser", decimalText(access))) {
    return {};
  }
  if (threadUserHive.empty() || access == refusedAccess) {
    return {};
  }
  makeKey(threadUserHive);
  return opened(normalized(threadUserHive), access);
}

// Null if the handle was not opened for this.
SimulatedRegistry::Key* SimulatedRegistry::keyFor(KeyHandle handle, uint32_t access) {
  const auto found = handles_.find(handle);
  if (found == handles_.end() || (found->second.access & access) != access) {
    return nullptr;
  }
  return &keys_[found->second.path];
}

// A value without an answer is a failure, as RegistryValue begins with that.
RegistryValue SimulatedRegistry::readValue(KeyHandle key, const std::u16string& name, size_t room) {
  if (!journal_.may("readValue", name)) {
    return {};
  }
  if (!keyFor(key, queryValueRight)) {
    return {};
  }
  const RegistryValue* found = value(handles_[key].path, name);
  if (!found) {
    return answered(RegistryAnswer::absent);
  }
  if (found->data.size() > room) {
    return {};
  }
  return *found;
}

bool SimulatedRegistry::hasValue(KeyHandle key, const std::u16string& name) {
  return journal_.may("hasValue", name) && keyFor(key, queryValueRight) &&
         value(handles_[key].path, name);
}

bool SimulatedRegistry::writeValue(KeyHandle key, const std::u16string& name, uint32_t type,
                                   std::span<const std::byte> data) {
  if (!journal_.may("writeValue", name) || !keyFor(key, setValueRight)) {
    return false;
  }
  setValue(handles_[key].path, name, type, copied(data));
  return true;
}

std::optional<KeyInfo> SimulatedRegistry::queryInfo(KeyHandle key) {
  if (!journal_.may("queryInfo")) {
    return std::nullopt;
  }
  const Key* found = keyFor(key, queryValueRight);
  if (!found) {
    return std::nullopt;
  }
  KeyInfo info;
  for (const RegistryValue& each : found->values) {
    ++info.valueCount;
    info.longestName = std::max(info.longestName, static_cast<uint32_t>(each.name.size()));
    info.longestData = std::max(info.longestData, static_cast<uint32_t>(each.data.size()));
  }
  return info;
}

// The terminator of the name needs room as well.
RegistryValue SimulatedRegistry::enumerateValue(KeyHandle key, uint32_t index, size_t nameRoom,
                                                size_t dataRoom) {
  if (!journal_.may("enumerateValue", decimalText(index))) {
    return {};
  }
  const Key* found = keyFor(key, queryValueRight);
  if (!found) {
    return {};
  }
  if (index >= found->values.size()) {
    return answered(RegistryAnswer::absent);
  }
  const RegistryValue& each = found->values[index];
  if (each.name.size() >= nameRoom || each.data.size() > dataRoom) {
    return {};
  }
  return each;
}

void SimulatedRegistry::close(KeyHandle key) {
  journal_.noteReturn("closeKey");
  handles_.erase(key);
}

void SimulatedRegistry::setValue(const std::u16string& path, const std::u16string& name,
                                 uint32_t type, std::vector<std::byte> data) {
  auto& values = keys_[normalized(path)].values;
  auto found = std::find_if(values.begin(), values.end(), [&](const RegistryValue& each) {
    return equalsIgnoringCase(each.name, name);
  });
  if (found == values.end()) {
    found = values.insert(values.end(), RegistryValue{});
  }
  // A name keeps the case that it came with first.
  if (found->name.empty()) {
    found->name = name;
  }
  found->answer = RegistryAnswer::ok;
  found->type = type;
  found->data = std::move(data);
}

void SimulatedRegistry::setText(const std::u16string& path, const std::u16string& name,
                                const std::u16string& text) {
  setValue(path, name, registryText,
           copied(std::as_bytes(std::span(text.c_str(), text.size() + 1))));
}

void SimulatedRegistry::setDword(const std::u16string& path, const std::u16string& name,
                                 uint32_t value) {
  setValue(path, name, registryDword, copied(std::as_bytes(std::span(&value, 1))));
}

const RegistryValue* SimulatedRegistry::value(const std::u16string& path,
                                              const std::u16string& name) const {
  const auto key = keys_.find(normalized(path));
  if (key == keys_.end()) {
    return nullptr;
  }
  for (const RegistryValue& each : key->second.values) {
    if (equalsIgnoringCase(each.name, name)) {
      return &each;
    }
  }
  return nullptr;
}

std::u16string SimulatedRegistry::shown(const std::u16string& path,
                                        const std::u16string& name) const {
  const RegistryValue* found = value(path, name);
  if (!found) {
    return u"(none)";
  }
  return found->type == registryDword ? decimalText(found->dword()) : found->text();
}

void SimulatedProfiles::setSection(const std::u16string& path, const std::u16string& section,
                                   std::vector<std::u16string> lines) {
  sections_[foldCase(path + u'\n' + section)] = std::move(lines);
}

const std::vector<std::u16string>* SimulatedProfiles::find(const std::u16string& path,
                                                           const std::u16string& section) const {
  const auto found = sections_.find(foldCase(path + u'\n' + section));
  return found == sections_.end() ? nullptr : &found->second;
}

uint32_t SimulatedProfiles::readInt(const std::u16string& path, const std::u16string& section,
                                    const std::u16string& key, uint32_t defaultValue) {
  if (!journal_.may("readProfileInt", section)) {
    return defaultValue;
  }
  const auto* lines = find(path, section);
  if (!lines) {
    return defaultValue;
  }
  for (const std::u16string& line : *lines) {
    // As the system does: a name that stands twice counts where it stands first.
    if (const auto equals = line.find(u'=');
        equals != std::u16string::npos && equalsIgnoringCase(line.substr(0, equals), key)) {
      return decimalValue(line.substr(equals + 1));
    }
  }
  return defaultValue;
}

std::u16string SimulatedProfiles::readSection(const std::u16string& path,
                                              const std::u16string& section, size_t room) {
  if (!journal_.may("readProfileSection", section)) {
    return {};
  }
  const auto* lines = find(path, section);
  std::u16string block;
  if (lines) {
    for (const std::u16string& line : *lines) {
      block += line + u'\0';
    }
  }
  // A terminator follows the last text's own; if there is no room, two follow the cut.
  if (block.size() >= room) {
    block.resize(room - 2);
  }
  return block;
}

}  // namespace umpd
