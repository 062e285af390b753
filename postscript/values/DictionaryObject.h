// DictionaryObject: dictionaries, ordered maps from texts to values. They grow as entries arrive.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "postscript/values/CompositeObject.h"

namespace postscript {

// The text under which a dictionary keeps the value of a key: a name's text, a string's text up to
// its first NUL byte, and what anything else says of itself.
class KeyText {
 public:
  explicit KeyText(const PostscriptObject& key);
  KeyText(const KeyText&) = delete;
  KeyText& operator=(const KeyText&) = delete;
  operator std::string_view() const { return view; }

 private:
  std::string own;
  std::string_view view;
};

class DictionaryData : public CompositeData {
 public:
  // Keys compare as unsigned bytes.
  using Entries = std::map<std::string, PostscriptObject*, std::less<>>;

  explicit DictionaryData(std::string dictionaryName = {})
      : CompositeData(TypeTag::dictionary), name(std::move(dictionaryName)) {}
  ~DictionaryData() override;

  // Replaces what stands under the key.
  void put(std::string_view key, PostscriptObject* value);
  // Null when there is no such key.
  PostscriptObject* get(std::string_view key) const;
  void remove(std::string_view key);
  void clear();

  const Entries& entries() const { return map; }
  int32_t size() const { return static_cast<int32_t>(map.size()); }
  // Counts the changes after which an iterator may be stale or stand at another place.
  uint64_t changes() const { return changeCount; }

  const std::string name;  // empty for a program's own dictionary

 private:
  Entries map;
  uint64_t changeCount = 0;
};

class DictionaryObject : public CompositeObject {
 public:
  static constexpr TypeTag tag = TypeTag::dictionary;

  explicit DictionaryObject(VirtualMemoryObject& space, std::string name = {});

  std::string describe() const override;
  std::string syntaxText() const override { return "-dict-"; }
  PostscriptObject* clone() const override { return new DictionaryObject(*this); }

  DictionaryData& body() const { return *static_cast<DictionaryData*>(data); }
  // Makes a value and puts it under the key.
  template <class T, class... Arguments>
  void putNew(std::string_view key, Arguments&&... arguments) {
    std::unique_ptr<T> value(new T(std::forward<Arguments>(arguments)...));
    body().put(key, value.get());
    value.release();
  }

 private:
  DictionaryObject(const DictionaryObject& source) : CompositeObject(source, source.executable) {}
};

}  // namespace postscript
