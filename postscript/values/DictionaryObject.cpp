// A dictionary is a hash table of pointers to its entries, with linear probing and no tombstones:
// removing an entry moves later ones of its run into the gap. The order of texts is made when
// somebody first walks over the entries, and is kept up from then on.
#include "postscript/values/DictionaryObject.h"

#include <algorithm>
#include <utility>

#include "postscript/values/NameObject.h"
#include "postscript/values/StringObject.h"
#include "postscript/values/VirtualMemory.h"

namespace postscript {

namespace {
constexpr size_t initialSlots = 8;
}  // namespace

KeyText::KeyText(const PostscriptObject& key) {
  if (const auto* name = as<NameObject>(&key)) {
    view_ = name->name();
  } else if (const auto* string = as<StringObject>(&key)) {
    view_ = string->textToNul();
  } else {
    own_ = key.describe();
    view_ = own_;
  }
}

Symbol& keySymbol(SymbolTable& symbols, PostscriptObject& key) {
  auto* name = as<NameObject>(&key);
  return name ? name->keyIn(symbols) : symbols.symbolOf(KeyText(key));
}

DictionaryData::~DictionaryData() {
  clear();
}

DictionaryEntry* DictionaryData::probe(const Symbol& key) const {
  const size_t mask = slots_.size() - 1;
  for (size_t slot = homeOf(key);; slot = (slot + 1) & mask) {
    DictionaryEntry* entry = slots_[slot];
    if (!entry || &entry->symbol == &key) {
      return entry;
    }
  }
}

void DictionaryData::put(Symbol& key, PostscriptObject* value) {
  if (DictionaryEntry* entry = find(key)) {
    ++value->refCount;
    giveUp(std::exchange(entry->value, value));
    return;
  }
  share_.resize(bytesFor(count_ + 1));
  if ((count_ + 1) * 2 > slots_.size()) {
    grow();
  }
  auto entry = std::make_unique<DictionaryEntry>(key, value);
  if (ordered_) {
    ordered_->insert(entry.get());
  }
  insert(entry.release());
  ++count_;
  ++value->refCount;
  key.foundAt = 0;
}

void DictionaryData::insert(DictionaryEntry* entry) {
  const size_t mask = slots_.size() - 1;
  size_t slot = homeOf(entry->symbol);
  while (slots_[slot]) {
    slot = (slot + 1) & mask;
  }
  slots_[slot] = entry;
}

void DictionaryData::grow() {
  Slots old(slots_.empty() ? initialSlots : slots_.size() * 2);
  old.swap(slots_);
  for (DictionaryEntry* entry : old) {
    if (entry) {
      insert(entry);
    }
  }
}

PostscriptObject* DictionaryData::get(const Symbol& key) const {
  const DictionaryEntry* entry = find(key);
  return entry ? entry->value : nullptr;
}

PostscriptObject* DictionaryData::get(std::string_view key) const {
  const Symbol* symbol = symbols_.find(key);
  return symbol ? get(*symbol) : nullptr;
}

void DictionaryData::remove(Symbol& key) {
  DictionaryEntry* entry = find(key);
  if (!entry) {
    return;
  }
  const size_t mask = slots_.size() - 1;
  size_t slot = homeOf(key);
  while (slots_[slot] != entry) {
    slot = (slot + 1) & mask;
  }
  if (ordered_) {
    ordered_->remove(entry);
  }
  unlink(slot);
  --count_;
  share_.resize(bytesFor(count_));
  PostscriptObject* value = entry->value;
  delete entry;
  giveUp(value);
}

// Every entry after the gap that would be found from a place at or before it moves into it.
void DictionaryData::unlink(size_t slot) {
  const size_t mask = slots_.size() - 1;
  size_t gap = slot;
  for (size_t next = (gap + 1) & mask; slots_[next]; next = (next + 1) & mask) {
    const size_t home = homeOf(slots_[next]->symbol);
    if (((next - home) & mask) >= ((next - gap) & mask)) {
      slots_[gap] = slots_[next];
      gap = next;
    }
  }
  slots_[gap] = nullptr;
}

void DictionaryData::clear() {
  // A value's end may look at this dictionary, so it is empty before the first goes.
  const Slots old = std::exchange(slots_, {});
  count_ = 0;
  share_.resize(std::min(share_.bytes(), bytesFor(0)));
  ordered_.reset();
  for (DictionaryEntry* entry : old) {
    if (entry) {
      PostscriptObject* value = entry->value;
      delete entry;
      giveUp(value);
    }
  }
}

const DictionaryEntry& DictionaryData::entryAt(int32_t index) const {
  if (!ordered_) {
    std::vector<DictionaryEntry*> all;
    all.reserve(count_);
    for (DictionaryEntry* entry : slots_) {
      if (entry) {
        all.push_back(entry);
      }
    }
    ordered_ = std::make_unique<OrderedEntries>(std::move(all));
  }
  return *ordered_->at(static_cast<size_t>(index));
}

std::vector<const DictionaryEntry*> DictionaryData::entries() const {
  std::vector<const DictionaryEntry*> all;
  all.reserve(count_);
  for (int32_t i = 0; i < size(); ++i) {
    all.push_back(&entryAt(i));
  }
  return all;
}

void DictionaryData::forEachElement(const Visit& visit) const {
  for (const DictionaryEntry* entry : slots_) {
    if (entry) {
      visit(*entry->value);
    }
  }
}

DictionaryObject::DictionaryObject(VirtualMemoryObject& space, std::string name)
    : CompositeObject(space, std::make_unique<DictionaryData>(space.budget(), space.symbols(),
                                                              std::move(name))) {}

std::string DictionaryObject::describe() const {
  std::string text = typeName(type);
  if (!body().name.empty()) {
    text += " " + body().name + " ";
  }
  return text + " " + std::to_string(body().size()) + " entries (" + memory->describe() + ")";
}

}  // namespace postscript
