// DictionaryStack: the permanent dictionaries, and every look-up of a name. Operators are entries
// of the system dictionary under their names, so looking up is dispatching too.
//
// A symbol remembers what its last look-up found. That is good as long as no dictionary was pushed
// or popped since and the key was neither added nor removed anywhere; a changed value of a key
// needs no care, as the symbol remembers the entry and not the value. After a push or pop only
// those dictionaries are searched that were pushed since, unless the one that held the key is gone.
#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "postscript/values/DictionaryObject.h"
#include "postscript/values/NameObject.h"
#include "postscript/values/ObjectStack.h"
#include "postscript/values/VirtualMemory.h"

namespace postscript {

class DictionaryStack {
 public:
  explicit DictionaryStack(VirtualMemorySet& memorySet);
  DictionaryStack(const DictionaryStack&) = delete;
  DictionaryStack& operator=(const DictionaryStack&) = delete;
  ~DictionaryStack();

  // The first value under the key, from the top dictionary down; null when there is none.
  PostscriptObject* lookup(Symbol& key) {
    const DictionaryEntry* entry = key.foundAt == changes_ ? key.found : find(key);
    return entry ? entry->value : nullptr;
  }
  PostscriptObject* lookup(std::string_view key) { return lookup(symbols_.symbolOf(key)); }
  // The dictionary that holds the key, by the same walk; null when none does.
  DictionaryObject* where(Symbol& key);
  // The top dictionary; null when the stack is empty.
  DictionaryObject* top() const { return static_cast<DictionaryObject*>(stack.top()); }
  // A null pointer fails.
  void push(DictionaryObject* dictionary);
  // Removes the top and takes one count off. Does not delete.
  DictionaryObject* pop();

  // Defines an operator in the system dictionary, in the place of an earlier one.
  void addOperator(std::unique_ptr<NameObject> newOperator);
  // The same for one of the generated layer.
  void addGeneratedOperator(std::unique_ptr<NameObject> newOperator);
  // Gives up dictionaries until the top is one of the three that are there from the start.
  void clearToPermanent();

  // Book-keeping, an entry for each event: the entries of the system dictionary that a later
  // registration replaced, and the generated operators.
  std::list<std::string> replacedNames;
  std::list<std::string> generatedNames;

  // The permanent dictionaries: a program can take them off the stack and undefine their names, and
  // they stay in memory all the same.
  DictionaryObject* const systemDictionary;
  DictionaryObject* const globalDictionary;
  DictionaryObject* const userDictionary;
  DictionaryObject* const errorDictionary;
  DictionaryObject* const fontDirectory;
  VirtualMemorySet& memory;
  // Changed by push and pop only.
  ObjectStack stack{"Dictionary Stack", &memory.budget};

 private:
  struct Level {
    DictionaryData* body;
    uint64_t pushedAt;  // the number of the change that pushed it
  };

  struct PermanentDictionaries;

  DictionaryStack(VirtualMemorySet& memorySet, PermanentDictionaries dictionaries);
  DictionaryEntry* find(Symbol& key);
  DictionaryEntry* remember(Symbol& key, DictionaryEntry* entry, size_t level) const;

  SymbolTable& symbols_;
  std::vector<Level> levels_;  // for each item of the stack
  uint64_t changes_ = 1;       // pushes and pops; a symbol has 0 for never
};

}  // namespace postscript
