// DictionaryStack: the standing dictionaries, and every look-up of a name. Operators stand in the
// system dictionary under their names, so looking up is dispatching too.
#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>

#include "postscript/values/DictionaryObject.h"
#include "postscript/values/NameObject.h"
#include "postscript/values/ObjectStack.h"

namespace postscript {

struct VirtualMemorySet;

class DictionaryStack {
 public:
  explicit DictionaryStack(VirtualMemorySet& memorySet);
  DictionaryStack(const DictionaryStack&) = delete;
  DictionaryStack& operator=(const DictionaryStack&) = delete;
  ~DictionaryStack();

  // The first value under the key, from the top dictionary down; null when there is none.
  PostscriptObject* lookup(std::string_view key) const;
  // The dictionary that holds the key, by the same walk; null when none does.
  DictionaryObject* where(std::string_view key) const;
  // The top dictionary; null when the stack is empty.
  DictionaryObject* top() const { return static_cast<DictionaryObject*>(stack.top()); }

  // Defines an operator in the system dictionary, in the place of an earlier one.
  void addOperator(std::unique_ptr<NameObject> newOperator);
  // The same for one of the generated layer.
  void addGeneratedOperator(std::unique_ptr<NameObject> newOperator);
  // Gives up dictionaries until the top is one that stands from the start.
  void clearToPermanent();

  // Book-keeping, an entry for each event: the entries of the system dictionary that a later
  // registration replaced, and the generated operators.
  std::list<std::string> replacedNames;
  std::list<std::string> generatedNames;

  // The standing dictionaries: a program can take them off the stack and undefine their names, and
  // they stay in memory all the same.
  DictionaryObject* const systemDictionary;
  DictionaryObject* const globalDictionary;
  DictionaryObject* const userDictionary;
  DictionaryObject* const errorDictionary;
  DictionaryObject* const fontDirectory;
  VirtualMemorySet& memory;
  ObjectStack stack{"Dictionary Stack"};
};

}  // namespace postscript
