// The table is a plain hash table with linear probing. Symbols are never taken out one by one: when
// the table is full, or the new ones are half of what all take, those that nobody uses any more are
// dropped, and it grows if too many remain.
#include "postscript/values/Symbol.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace postscript {

namespace {

constexpr size_t initialSlots = 2048;
// Unused symbols may take so much before they are looked for.
constexpr size_t untidyBytes = size_t{1} << 20;

// What a symbol takes with its slots.
size_t bytesOfSymbol(size_t textSize) {
  return 160 + textSize;
}

template <class Word>
uint64_t wordAt(const char* bytes) {
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// All bytes of a text of up to eight, in two reads that may overlap.
uint64_t shortWord(const char* bytes, size_t size) {
  if (size >= 4) {
    return wordAt<uint32_t>(bytes) << 32 | wordAt<uint32_t>(bytes + size - 4);
  }
  if (size >= 2) {
    return wordAt<uint16_t>(bytes) << 16 | wordAt<uint16_t>(bytes + size - 2);
  }
  return size == 1 ? static_cast<uint8_t>(*bytes) : 0;
}

// Names are too short for a call of memcmp to pay.
bool areEqual(std::string_view a, std::string_view b) {
  const size_t size = a.size();
  if (size != b.size()) {
    return false;
  }
  if (size <= 8) {
    return shortWord(a.data(), size) == shortWord(b.data(), size);
  }
  for (size_t at = 0; at < size - 8; at += 8) {
    if (wordAt<uint64_t>(a.data() + at) != wordAt<uint64_t>(b.data() + at)) {
      return false;
    }
  }
  return wordAt<uint64_t>(a.data() + size - 8) == wordAt<uint64_t>(b.data() + size - 8);
}

// Eight bytes at a time, the last eight once more if they overlap. A multiplication spreads a byte
// upwards only, so the upper half is folded into the lower one before the next.
uint32_t hashOf(std::string_view text) {
  constexpr uint64_t factor = 0x9e3779b97f4a7c15;
  const size_t size = text.size();
  uint64_t hash = size;
  if (size > 8) {
    for (size_t at = 0; at < size - 8; at += 8) {
      hash = (hash ^ wordAt<uint64_t>(text.data() + at)) * factor;
      hash ^= hash >> 32;
    }
    hash = (hash ^ wordAt<uint64_t>(text.data() + size - 8)) * factor;
  } else {
    hash = (hash ^ shortWord(text.data(), size)) * factor;
  }
  hash = (hash ^ hash >> 32) * factor;
  return static_cast<uint32_t>(hash >> 32);
}

}  // namespace

Symbol& Symbol::make(std::string_view text, Budget* budget) {
  const size_t bytes = bytesOfSymbol(text.size());
  if (budget) {
    budget->expectRoom(bytes);
  }
  Symbol& symbol = make(text, 0, nullptr, budget);
  symbol.share_.resize(bytes);
  return symbol;
}

Symbol& Symbol::make(std::string_view text, uint32_t hash, const SymbolTable* table,
                     Budget* budget) {
  void* block = objectPool::allocate(sizeof(Symbol) + text.size());
  auto* symbol = new (block) Symbol(static_cast<uint32_t>(text.size()), hash, table, budget);
  text.copy(reinterpret_cast<char*>(symbol + 1), text.size());
  return *symbol;
}

void Symbol::end() {
  const size_t blockSize = sizeof(Symbol) + size_;
  this->~Symbol();
  objectPool::free(this, blockSize);
}

SymbolTable::SymbolTable(Budget* budget) : slots_(initialSlots), budget_(budget), share_(budget) {}

SymbolTable::~SymbolTable() {
  for (const auto& [symbol, hash] : slots_) {
    if (symbol && symbol->uses_ == 0) {
      symbol->end();
    } else if (symbol) {
      symbol->table_ = nullptr;
    }
  }
}

size_t SymbolTable::slotOf(std::string_view text, uint32_t hash) const {
  const size_t mask = slots_.size() - 1;
  size_t slot = hash & mask;
  while (slots_[slot].symbol &&
         (slots_[slot].hash != hash || !areEqual(slots_[slot].symbol->text(), text))) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

Symbol* SymbolTable::find(std::string_view text) const {
  return slots_[slotOf(text, hashOf(text))].symbol;
}

Symbol& SymbolTable::symbolOf(std::string_view text) {
  const uint32_t hash = hashOf(text);
  size_t slot = slotOf(text, hash);
  if (!slots_[slot].symbol) {
    expectRoom(text.size());
    slot = slotOf(text, hash);
    slots_[slot] = {&Symbol::make(text, hash, this, nullptr), hash};
    ++count_;
  }
  return *slots_[slot].symbol;
}

Symbol& SymbolTable::existingOrOwn(std::string_view text) {
  Symbol* symbol = find(text);
  return symbol ? *symbol : Symbol::make(text, budget_);
}

// Before a symbol is added.
void SymbolTable::expectRoom(size_t textSize) {
  const size_t bytes = bytesOfSymbol(textSize);
  const bool untidy = bytesSinceTidied_ + bytes > std::max(untidyBytes, share_.bytes() / 2);
  if (count_ * 2 >= slots_.size() || untidy) {
    makeRoom();
  }
  share_.resize(share_.bytes() + bytes);
  bytesSinceTidied_ += bytes;
}

void SymbolTable::makeRoom() {
  size_t used = 0;
  for (const auto& [symbol, hash] : slots_) {
    used += symbol && symbol->uses_ > 0;
  }
  std::vector<Slot> old(used * 4 > slots_.size() ? slots_.size() * 2 : slots_.size());
  old.swap(slots_);
  count_ = used;
  size_t bytes = 0;
  for (const auto& [symbol, hash] : old) {
    if (!symbol) {
      continue;
    }
    if (symbol->uses_ == 0) {
      symbol->end();
    } else {
      slots_[slotOf(symbol->text(), hash)] = {symbol, hash};
      bytes += bytesOfSymbol(symbol->text().size());
    }
  }
  share_.resize(std::min(bytes, share_.bytes()));
  bytesSinceTidied_ = 0;
}

}  // namespace postscript
