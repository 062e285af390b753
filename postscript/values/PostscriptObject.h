// PostscriptObject: the root of every value. Data and operators are objects of one tree, so that
// the engine holds pointers to objects on its stacks and asks one of six things of them.
//
// Lives are counted by hand. A container adds one to `refCount` when it stores an object and takes
// one off when it gives it up; a new object has 0. `holders` counts the code that is working on the
// object at this moment (see Held.h) and keeps it in memory without a say in `refCount`, which
// programs can observe. An object ends when it is released with neither.
#pragma once

#include <cstdint>
#include <string>

#include "postscript/values/ObjectPool.h"

namespace postscript {

class Interpreter;

enum class TypeTag : uint32_t {
  boolean = 0,
  fontId = 1,
  integer = 2,
  mark = 3,
  name = 4,  // operators too
  null = 5,
  operatorType = 6,
  real = 7,
  array = 8,
  dictionary = 9,
  file = 10,
  gstate = 11,
  packedArray = 12,
  save = 13,
  string = 14,
};

// "ps_integer" and so on; "unknown" for a number that is no tag.
const char* typeName(TypeTag tag);

// How the engine runs an executable object.
enum class RunBy : uint8_t {
  execute,  // by its own operation
  name,     // a plain name of the interpreter's symbols: by what it stands for
  array,    // element by element
};

class PostscriptObject : public objectPool::Pooled {
 public:
  explicit PostscriptObject(TypeTag theType) : type(theType) {}
  PostscriptObject(const PostscriptObject&) = delete;
  PostscriptObject& operator=(const PostscriptObject&) = delete;

  virtual ~PostscriptObject();
  // Runs the object; pushes it on the operand stack unless a class knows better.
  virtual void execute(Interpreter& ps);
  // For diagnostics, and the key under which a dictionary keeps a value that is no name or string.
  virtual std::string describe() const;
  // What == prints.
  virtual std::string syntaxText() const;
  // What = prints.
  virtual std::string valueText() const;
  // A new object of the same class and value that nobody holds yet.
  virtual PostscriptObject* clone() const = 0;

  bool executable = true;
  RunBy runBy = RunBy::execute;
  bool countIsKept = false;  // by the memory, see VirtualMemorySet
  int32_t refCount = 0;
  const TypeTag type;
  int32_t holders = 0;
};

// The object as a T, or null when it is none. T::tag says which tag a T bears.
template <class T>
T* as(PostscriptObject* object) {
  return object && object->type == T::tag ? static_cast<T*>(object) : nullptr;
}
template <class T>
const T* as(const PostscriptObject* object) {
  return object && object->type == T::tag ? static_cast<const T*>(object) : nullptr;
}

// Deletes an object that nobody stores and nobody works on. The count was taken off before.
inline void release(PostscriptObject* object) {
  if (object->refCount < 1 && object->holders == 0) {
    delete object;
  }
}

// Takes one count off and releases.
inline void giveUp(PostscriptObject* object) {
  --object->refCount;
  release(object);
}

}  // namespace postscript
