// Loops. The engine has no frames: a loop keeps its state in a continuation, an object of the
// operator's own class that stands on the execution stack under the running procedure and is run
// when that has ended. The instance in the system dictionary has no procedure and makes the
// continuations. exit finds them by their name alone.
#pragma once

#include <memory>

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// A continuation's hold on its procedure. At its end the procedure is literal again.
class RunningProcedure {
 public:
  explicit RunningProcedure(PostscriptObject* procedure);
  RunningProcedure(const RunningProcedure&) = delete;
  RunningProcedure& operator=(const RunningProcedure&) = delete;
  ~RunningProcedure();

  PostscriptObject* get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  PostscriptObject* object_;
};

// initial increment limit proc for -      (the limit is exclusive)
class ForOperator : public NameObject {
 public:
  ForOperator();
  ForOperator(PostscriptObject* theControl, PostscriptObject* theProc, PostscriptObject* theLimit,
              PostscriptObject* theIncrement, PostscriptObject* theInitial);
  ~ForOperator() override;
  void execute(Interpreter& ps) override;

 private:
  static void begin(Interpreter& ps);
  void addIncrement();
  void round(Interpreter& ps);

  PostscriptObject* const control;
  const RunningProcedure proc;
  // Popped and never counted: kept in memory only.
  PostscriptObject* const limit;
  PostscriptObject* const increment;
  bool up = true;
  PostscriptObject* const initial;
};

// collection proc forall -
class ForallOperator : public NameObject {
 public:
  ForallOperator();
  ForallOperator(PostscriptObject* theProc, PostscriptObject* theCollection);
  ~ForallOperator() override;
  void execute(Interpreter& ps) override;

 private:
  void step(Interpreter& ps);
  void step(Interpreter& ps, PostscriptObject* key, PostscriptObject* element);
  void stepDictionary(Interpreter& ps);

  const RunningProcedure proc;
  PostscriptObject* const collection;
  int32_t index = 0;
};

// proc loop -
class LoopOperator : public NameObject {
 public:
  explicit LoopOperator(PostscriptObject* theProc = nullptr);
  ~LoopOperator() override;
  void execute(Interpreter& ps) override;

 private:
  const RunningProcedure proc;
};

// count proc repeat -
class RepeatOperator : public NameObject {
 public:
  explicit RepeatOperator(PostscriptObject* theProc = nullptr, int32_t theRemaining = 0);
  ~RepeatOperator() override;
  void execute(Interpreter& ps) override;

 private:
  const RunningProcedure proc;
  int32_t remaining;
};

// - exit -
POSTSCRIPT_OPERATOR(ExitOperator, "exit");

void addLoopOperators(OperatorRegistry& registry);

}  // namespace postscript
