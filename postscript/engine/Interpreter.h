// Interpreter: the language engine. Its loop takes the top of the execution stack or else the next
// token, and pushes or runs it. { and } are operators: while they collect a procedure on the
// deferred stack nothing else runs. Start at run.
//
// All fields are open to the operators: an operator is given the interpreter and works on them.
// Nothing is reset by a failure; the next run goes on with what stands.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "postscript/engine/DictionaryStack.h"
#include "postscript/engine/Observer.h"
#include "postscript/engine/Parser.h"
#include "postscript/values/Held.h"
#include "postscript/values/ObjectStack.h"
#include "postscript/values/VirtualMemory.h"

namespace postscript {

namespace generated {
class GeneratedOps;
}

class ArrayObject;

class Interpreter {
 public:
  // Without operators: a composition registers those (see converter/Layers.h).
  Interpreter();
  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;
  ~Interpreter();

  // Runs a range of bytes, which must stay valid during the call. Returns when the range is used up
  // or an operator has asked for more input; fails with Ex.
  void run(const char* bytes, size_t length);
  void run(const char* text);
  // A diagnostic pass that runs nothing: writes to the debugger's output which lower-case names of
  // two letters and more nothing stands for, and how often each occurs.
  void listUnknownNames(const char* bytes, size_t length);

  // An object for as long as the caller works on it.
  template <class T>
  Held<T> hold(T* object) {
    return Held<T>(abandoned, object);
  }

  VirtualMemorySet memory;
  DictionaryStack dictionaries{memory};
  std::shared_ptr<generated::GeneratedOps> generatedOps;  // set with the generated layer
  Parser parser{memory, dictionaries};
  ObjectStack operandStack{"Operand Stack", &memory.budget};
  ObjectStack executionStack{"Execution Stack", &memory.budget};
  ObjectStack deferredStack{"Deferred execution stack", &memory.budget};
  int32_t saveLevel = 1;
  bool suspendFlag = false;
  std::string printBuffer;
  BudgetShare printShare{&memory.budget};
  AbandonedObjects abandoned{&memory.budget};
  Observer* observer = nullptr;  // not owned

 private:
  // The observer is asked once in so many turns.
  static constexpr uint32_t turnsPerQuestion = 4096;

  void runTurns();
  // Takes the next token and runs, pushes or collects it. False when the input is used up.
  bool runToken();
  // Steps through a running array, the top of the execution stack, while it stays the top.
  void runArray(ArrayObject* array);
  void endArray(ArrayObject* array);
  // Runs what the name stands for, at once: nothing can look between the name and its value.
  void runName(Symbol& symbol);
  [[noreturn]] static void failOnUnknown(const Symbol& symbol);
  // Pushes a literal object, starts an array, executes anything else.
  void runObject(PostscriptObject* object);
  bool isBrace(const PostscriptObject& object) const;
  void askWhetherToStop();
  void countTurn() {
    if (--turnsLeft_ == 0) {
      askWhetherToStop();
    }
  }

  uint32_t turnsLeft_ = turnsPerQuestion;
  uint64_t questions_ = 0;  // in this run
  // While a procedure is being collected, these two names run.
  Symbol& openBrace_;
  Symbol& closeBrace_;
};

}  // namespace postscript
