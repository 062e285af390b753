// DictionaryObject: dictionaries, maps from texts to values. They grow as entries arrive. Entries
// are found by their symbol; those who walk over a dictionary see them in the order of their texts.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "postscript/values/Budget.h"
#include "postscript/values/CompositeObject.h"
#include "postscript/values/OrderedEntries.h"
#include "postscript/values/Symbol.h"

namespace postscript {

// The text under which a dictionary keeps the value of a key: a name's text, a string's text up to
// its first NUL byte, and what anything else says of itself.
class KeyText {
 public:
  explicit KeyText(const PostscriptObject& key);
  KeyText(const KeyText&) = delete;
  KeyText& operator=(const KeyText&) = delete;
  operator std::string_view() const { return view_; }

 private:
  std::string own_;
  std::string_view view_;
};

// The symbol of the same text.
Symbol& keySymbol(SymbolTable& symbols, PostscriptObject& key);

// One key with its value. An entry keeps its address for as long as its key stays.
class DictionaryEntry : public objectPool::Pooled {
 public:
  DictionaryEntry(Symbol& theSymbol, PostscriptObject* theValue)
      : symbol(theSymbol), value(theValue) {
    symbol.take();
  }
  DictionaryEntry(const DictionaryEntry&) = delete;
  DictionaryEntry& operator=(const DictionaryEntry&) = delete;
  ~DictionaryEntry() {
    if (symbol.found == this) {
      symbol.foundAt = 0;
    }
    symbol.giveBack();
  }

  Symbol& symbol;
  PostscriptObject* value;  // counted by the dictionary
};

class DictionaryData : public CompositeData {
 public:
  DictionaryData(Budget& budget, SymbolTable& symbols, std::string theName = {})
      : CompositeData(TypeTag::dictionary),
        name(std::move(theName)),
        symbols_(symbols),
        share_(&budget, bytesFor(0)) {}
  ~DictionaryData() override;

  // Replaces an existing value of the key.
  void put(Symbol& key, PostscriptObject* value);
  void put(std::string_view key, PostscriptObject* value) { put(symbols_.symbolOf(key), value); }
  // Null when there is no such key.
  PostscriptObject* get(const Symbol& key) const;
  PostscriptObject* get(std::string_view key) const;
  DictionaryEntry* find(const Symbol& key) const { return slots_.empty() ? nullptr : probe(key); }
  void remove(Symbol& key);
  void remove(std::string_view key) { remove(symbols_.symbolOf(key)); }
  void clear();

  int32_t size() const { return static_cast<int32_t>(count_); }
  // By the order of the texts. index: below the size.
  const DictionaryEntry& entryAt(int32_t index) const;
  // All entries in that order.
  std::vector<const DictionaryEntry*> entries() const;

  void forEachElement(const Visit& visit) const override;
  void clearContents() override {
    clear();
    share_.resize(0);
  }

  const std::string name;  // empty for a program's own dictionary

 private:
  using Slots = std::vector<DictionaryEntry*, objectPool::Allocator<DictionaryEntry*>>;

  // What a dictionary takes with so many entries: body and handle, and for each entry its key's
  // slots, its value and itself.
  static size_t bytesFor(size_t entries) { return 256 + entries * 256; }
  size_t homeOf(const Symbol& key) const { return key.hash_ & (slots_.size() - 1); }
  DictionaryEntry* probe(const Symbol& key) const;
  void insert(DictionaryEntry* entry);
  void grow();
  void unlink(size_t slot);

  SymbolTable& symbols_;
  Slots slots_;  // open addressing; a power of two, at most half full
  size_t count_ = 0;
  BudgetShare share_;
  mutable std::unique_ptr<OrderedEntries> ordered_;  // since somebody walked over the dictionary
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
