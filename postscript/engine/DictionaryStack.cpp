#include "postscript/engine/DictionaryStack.h"

#include "postscript/values/VirtualMemory.h"

namespace postscript {

struct DictionaryStack::Permanent {
  explicit Permanent(VirtualMemorySet& memorySet)
      : system(new DictionaryObject(*memorySet.global, "System")),
        global(new DictionaryObject(*memorySet.global, "Global")),
        user(new DictionaryObject(*memorySet.local, "User")),
        error(new DictionaryObject(*memorySet.local, "Error")),
        font(new DictionaryObject(*memorySet.global, "Font")) {}

  std::unique_ptr<DictionaryObject> system, global, user, error, font;
};

DictionaryStack::DictionaryStack(VirtualMemorySet& memorySet)
    : DictionaryStack(memorySet, Permanent(memorySet)) {}

// The holders are counted first: what a failing push leaves on the stack is not deleted with it.
DictionaryStack::DictionaryStack(VirtualMemorySet& memorySet, Permanent made)
    : systemDictionary(made.system.get()),
      globalDictionary(made.global.get()),
      userDictionary(made.user.get()),
      errorDictionary(made.error.get()),
      fontDirectory(made.font.get()),
      memory(memorySet),
      symbols_(memorySet.symbols) {
  for (DictionaryObject* dictionary : {systemDictionary, globalDictionary, userDictionary}) {
    ++dictionary->holders;
    push(dictionary);
  }
  ++errorDictionary->refCount;
  ++fontDirectory->refCount;
  for (auto* owner : {&made.system, &made.global, &made.user, &made.error, &made.font}) {
    owner->release();
  }
}

DictionaryStack::~DictionaryStack() {
  for (const char* name : {"systemdict", "globaldict", "userdict", "errordict"}) {
    systemDictionary->body().remove(name);
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
  if (system.get(newOperator->name)) {
    replacedNames.push_back(newOperator->name);
  }
  system.put(newOperator->name, newOperator.get());
  newOperator.release();
}

void DictionaryStack::addGeneratedOperator(std::unique_ptr<NameObject> newOperator) {
  generatedNames.push_back(newOperator->name);
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
