#include "postscript/values/DictionaryObject.h"

#include <utility>

#include "postscript/values/NameObject.h"
#include "postscript/values/StringObject.h"
#include "postscript/values/VirtualMemory.h"

namespace postscript {

KeyText::KeyText(const PostscriptObject& key) {
  if (const auto* name = as<NameObject>(&key)) {
    view = name->name;
  } else if (const auto* string = as<StringObject>(&key)) {
    view = string->textToNul();
  } else {
    own = key.describe();
    view = own;
  }
}

DictionaryData::~DictionaryData() {
  for (auto& [key, value] : map) {
    giveUp(value);
  }
}

void DictionaryData::put(std::string_view key, PostscriptObject* value) {
  const auto entry = map.find(key);
  if (entry == map.end()) {
    map.emplace(key, value);
    ++changeCount;
    ++value->refCount;
  } else {
    ++value->refCount;
    giveUp(std::exchange(entry->second, value));
  }
}

PostscriptObject* DictionaryData::get(std::string_view key) const {
  const auto entry = map.find(key);
  return entry == map.end() ? nullptr : entry->second;
}

void DictionaryData::remove(std::string_view key) {
  const auto entry = map.find(key);
  if (entry == map.end()) {
    return;
  }
  PostscriptObject* value = entry->second;
  map.erase(entry);
  ++changeCount;
  giveUp(value);
}

void DictionaryData::clear() {
  const Entries old = std::exchange(map, {});
  ++changeCount;
  for (const auto& [key, value] : old) {
    giveUp(value);
  }
}

DictionaryObject::DictionaryObject(VirtualMemoryObject& space, std::string name)
    : CompositeObject(space, std::make_unique<DictionaryData>(std::move(name))) {}

std::string DictionaryObject::describe() const {
  std::string text = typeName(type);
  if (!body().name.empty()) {
    text += " " + body().name + " ";
  }
  return text + " " + std::to_string(body().size()) + " entries (" + memory->describe() + ")";
}

}  // namespace postscript
