#include "postscript/engine/DictionaryStack.h"

#include <memory>

#include "postscript/values/VirtualMemory.h"

namespace postscript {

// Owners until all of them are there, so that nothing is lost when memory runs out on the way.
struct DictionaryStack::PermanentDictionaries {
  explicit PermanentDictionaries(VirtualMemorySet& memory)
      : system(new DictionaryObject(*memory.global, "System")),
        global(new DictionaryObject(*memory.global, "Global")),
        user(new DictionaryObject(*memory.local, "User")),
        error(new DictionaryObject(*memory.local, "Error")),
        font(new DictionaryObject(*memory.global, "Font")) {}

  std::unique_ptr<DictionaryObject> system;
  std::unique_ptr<DictionaryObject> global;
  std::unique_ptr<DictionaryObject> user;
  std::unique_ptr<DictionaryObject> error;
  std::unique_ptr<DictionaryObject> font;
};

DictionaryStack::DictionaryStack(VirtualMemorySet& memorySet, PermanentDictionaries dictionaries)
    : systemDictionary(dictionaries.system.release()),
      globalDictionary(dictionaries.global.release()),
      userDictionary(dictionaries.user.release()),
      errorDictionary(dictionaries.error.release()),
      fontDirectory(dictionaries.font.release()),
      memory(memorySet),
      symbols_(memorySet.symbols) {
  for (DictionaryObject* dictionary : {systemDictionary, globalDictionary, userDictionary}) {
    ++dictionary->holders;
  }
  ++errorDictionary->refCount;
  ++fontDirectory->refCount;
}

DictionaryStack::DictionaryStack(VirtualMemorySet& memorySet)
    : DictionaryStack(memorySet, PermanentDictionaries(memorySet)) {
  for (DictionaryObject* dictionary : {systemDictionary, globalDictionary, userDictionary}) {
    push(dictionary);
  }
}

DictionaryStack::~DictionaryStack() {
  for (const char* name : {"systemdict", "globaldict", "userdict", "errordict"}) {
    if (Symbol* key = symbols_.find(name)) {
      systemDictionary->body().remove(*key);
    }
  }
  giveUp(errorDictionary);
  giveUp(fontDirectory);
  stack.clear();
  for (DictionaryObject* dictionary : {systemDictionary, globalDictionary, userDictionary}) {
    --dictionary->holders;
    release(dictionary);
  }
}

void DictionaryStack::push(DictionaryObject* dictionary) {
  if (levels_.size() == levels_.capacity()) {
    levels_.reserve(levels_.size() * 2 + 8);
  }
  stack.pushChecked(dictionary);
  levels_.push_back({&dictionary->body(), ++changes_});
}

DictionaryObject* DictionaryStack::pop() {
  auto* dictionary = static_cast<DictionaryObject*>(stack.pop());
  levels_.pop_back();
  ++changes_;
  return dictionary;
}

DictionaryEntry* DictionaryStack::find(Symbol& key) {
  size_t level = levels_.size();
  while (level > 0 && levels_[level - 1].pushedAt > key.foundAt) {
    --level;
    if (DictionaryEntry* entry = levels_[level].body->find(key)) {
      return remember(key, entry, level);
    }
  }
  // The levels below are the same as at the last look-up.
  const bool searched = key.foundAt != 0;
  if (searched && (!key.found || key.foundLevel < level)) {
    return remember(key, key.found, key.foundLevel);
  }
  while (level > 0) {
    --level;
    if (DictionaryEntry* entry = levels_[level].body->find(key)) {
      return remember(key, entry, level);
    }
  }
  return remember(key, nullptr, 0);
}

DictionaryEntry* DictionaryStack::remember(Symbol& key, DictionaryEntry* entry,
                                           size_t level) const {
  key.found = entry;
  key.foundLevel = static_cast<uint32_t>(level);
  key.foundAt = changes_;
  return entry;
}

DictionaryObject* DictionaryStack::where(Symbol& key) {
  if (!lookup(key)) {
    return nullptr;
  }
  return static_cast<DictionaryObject*>(stack.at(key.foundLevel));
}

void DictionaryStack::addOperator(std::unique_ptr<NameObject> newOperator) {
  DictionaryData& system = systemDictionary->body();
  if (system.get(newOperator->name())) {
    replacedNames.emplace_back(newOperator->name());
  }
  system.put(newOperator->name(), newOperator.get());
  newOperator.release();
}

void DictionaryStack::addGeneratedOperator(std::unique_ptr<NameObject> newOperator) {
  generatedNames.emplace_back(newOperator->name());
  addOperator(std::move(newOperator));
}

void DictionaryStack::clearToPermanent() {
  for (;;) {
    const PostscriptObject* dictionary = stack.top();
    if (!dictionary || dictionary == systemDictionary || dictionary == globalDictionary ||
        dictionary == userDictionary) {
      return;
    }
    release(pop());
  }
}

}  // namespace postscript
