#include "postscript/engine/DictionaryStack.h"

#include "postscript/values/VirtualMemory.h"

namespace postscript {

DictionaryStack::DictionaryStack(VirtualMemorySet& memorySet)
    : systemDictionary(new DictionaryObject(*memorySet.global, "System")),
      globalDictionary(new DictionaryObject(*memorySet.global, "Global")),
      userDictionary(new DictionaryObject(*memorySet.local, "User")),
      errorDictionary(new DictionaryObject(*memorySet.local, "Error")),
      fontDirectory(new DictionaryObject(*memorySet.global, "Font")),
      memory(memorySet) {
  for (DictionaryObject* dictionary : {systemDictionary, globalDictionary, userDictionary}) {
    stack.pushChecked(dictionary);
    ++dictionary->holders;
  }
  ++errorDictionary->refCount;
  ++fontDirectory->refCount;
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

PostscriptObject* DictionaryStack::lookup(std::string_view key) const {
  for (int32_t i = stack.size() - 1; i >= 0; --i) {
    if (auto* value = static_cast<DictionaryObject*>(stack.at(i))->body().get(key)) {
      return value;
    }
  }
  return nullptr;
}

DictionaryObject* DictionaryStack::where(std::string_view key) const {
  for (int32_t i = stack.size() - 1; i >= 0; --i) {
    auto* dictionary = static_cast<DictionaryObject*>(stack.at(i));
    if (dictionary->body().get(key)) {
      return dictionary;
    }
  }
  return nullptr;
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
    release(stack.pop());
  }
}

}  // namespace postscript
