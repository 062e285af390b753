// Loops. The engine has no frames: a loop keeps its state in a continuation, an object of the
// operator's own class that stands on the execution stack under the running procedure and is run
// when that has ended. The instance in the system dictionary has no procedure and makes the
// continuations. exit finds them by their name alone.
#pragma once

#include <memory>

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/Budget.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// A continuation's hold on its procedure. At its end the procedure is literal again.
class RunningProcedure {
 public:
  // The registered operator's, which runs none.
  RunningProcedure() = default;
  RunningProcedure(Interpreter& ps, PostscriptObject* procedure);
  RunningProcedure(const RunningProcedure&) = delete;
  RunningProcedure& operator=(const RunningProcedure&) = delete;
  ~RunningProcedure();

  PostscriptObject* get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  PostscriptObject* object_ = nullptr;
  BudgetShare share_{nullptr};
};

// initial increment limit proc for -      (the limit is exclusive)
class ForOperator : public NameObject {
 public:
  ForOperator() : NameObject("for") {}
  ForOperator(Interpreter& ps, PostscriptObject* theControl, PostscriptObject* theProc,
              PostscriptObject* theLimit, PostscriptObject* theIncrement,
              PostscriptObject* theInitial);
  ~ForOperator() override;
  void execute(Interpreter& ps) override;

 private:
  static void begin(Interpreter& ps);
  void addIncrement();
  void round(Interpreter& ps);

  PostscriptObject* const control = nullptr;
  const RunningProcedure proc;
  // Popped and never counted: kept in memory only.
  PostscriptObject* const limit = nullptr;
  PostscriptObject* const increment = nullptr;
  bool up = true;
  PostscriptObject* const initial = nullptr;
};

// collection proc forall -
class ForallOperator : public NameObject {
 public:
  ForallOperator() : NameObject("forall") {}
  ForallOperator(Interpreter& ps, PostscriptObject* theProc, PostscriptObject* theCollection);
  ~ForallOperator() override;
  void execute(Interpreter& ps) override;

 private:
  void step(Interpreter& ps);
  void step(Interpreter& ps, PostscriptObject* key, PostscriptObject* element);
  void stepDictionary(Interpreter& ps);

  const RunningProcedure proc;
  PostscriptObject* const collection = nullptr;
  int32_t index = 0;
};

// proc loop -
class LoopOperator : public NameObject {
 public:
  LoopOperator() : NameObject("loop") {}
  LoopOperator(Interpreter& ps, PostscriptObject* theProc);
  ~LoopOperator() override;
  void execute(Interpreter& ps) override;

 private:
  const RunningProcedure proc;
};

// count proc repeat -
class RepeatOperator : public NameObject {
 public:
  RepeatOperator() : NameObject("repeat") {}
  RepeatOperator(Interpreter& ps, PostscriptObject* theProc, int32_t theRemaining);
  ~RepeatOperator() override;
  void execute(Interpreter& ps) override;

 private:
  const RunningProcedure proc;
  int32_t remaining = 0;
};

// - exit -
POSTSCRIPT_OPERATOR(ExitOperator, "exit");

void addLoopOperators(OperatorRegistry& registry);

}  // namespace postscript
