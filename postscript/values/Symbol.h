// Symbol: the text of a name, shared by everything that bears it. A table of an interpreter keeps
// one symbol for each text, so that two names are equal exactly when their symbols are the same
// one, and a look-up compares pointers. A symbol also remembers what the last look-up of its text
// found (see DictionaryStack); the text alone is all that programs can see of it.
//
// A symbol can also stand outside of the table, for a name whose text is no key of anything yet.
// Most literal names of a page are such: they are read, and dropped unused.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "postscript/values/Budget.h"
#include "postscript/values/ObjectPool.h"

namespace postscript {

class DictionaryEntry;
class SymbolTable;

// The text lies behind the symbol, in the same block of memory.
class Symbol {
 public:
  // Outside of any table, and without a use. It ends with its last, before the budget does; null
  // for none.
  static Symbol& make(std::string_view text, Budget* budget = nullptr);
  Symbol(const Symbol&) = delete;
  Symbol& operator=(const Symbol&) = delete;

  // Each holder of a pointer takes one use. Without uses a symbol of a table stays for the next
  // holder until the table is tidied; any other one ends with the last.
  void take() { ++uses_; }
  void giveBack() {
    if (--uses_ == 0 && !table_) {
      end();
    }
  }
  // The table that keeps it, null for none.
  const SymbolTable* table() const { return table_; }

  std::string_view text() const { return {reinterpret_cast<const char*>(this + 1), size_}; }

  // What DictionaryStack found under this text, at which place of the stack, and when; 0 for never.
  DictionaryEntry* found = nullptr;
  uint32_t foundLevel = 0;
  uint64_t foundAt = 0;

 private:
  friend class SymbolTable;
  friend class DictionaryData;
  Symbol(uint32_t size, uint32_t hash, const SymbolTable* table, Budget* budget)
      : size_(size), hash_(hash), table_(table), share_(budget) {}
  static Symbol& make(std::string_view text, uint32_t hash, const SymbolTable* table,
                      Budget* budget);
  void end();

  const uint32_t size_;
  const uint32_t hash_;
  int32_t uses_ = 0;
  const SymbolTable* table_;
  BudgetShare share_;  // of a symbol outside of the table, which has one share for all
};

class SymbolTable {
 public:
  // budget: null for a table that nobody limits.
  explicit SymbolTable(Budget* budget = nullptr);
  SymbolTable(const SymbolTable&) = delete;
  SymbolTable& operator=(const SymbolTable&) = delete;
  ~SymbolTable();

  // The one symbol of a text. Whoever keeps the pointer takes a use before the next call.
  Symbol& symbolOf(std::string_view text);
  // The same if there is one already; else a symbol outside of the table.
  Symbol& existingOrOwn(std::string_view text);
  // Null when no symbol has the text.
  Symbol* find(std::string_view text) const;

 private:
  size_t slotOf(std::string_view text, uint32_t hash) const;
  void expectRoom(size_t textSize);
  void makeRoom();

  struct Slot {
    Symbol* symbol;
    uint32_t hash;
  };

  std::vector<Slot> slots_;  // open addressing; null is free; a power of two, at most half full
  size_t count_ = 0;
  Budget* budget_;
  BudgetShare share_;            // for all symbols
  size_t bytesSinceTidied_ = 0;  // of those that came since unused ones were dropped
};

}  // namespace postscript
