// stop and stopped. stopped sees stop alone: a failure leaves the engine whatever is open.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/operators/LoopOperators.h"

namespace postscript {

// proc stopped boolean
class StoppedOperator : public NameObject {
 public:
  StoppedOperator() : NameObject("stopped") {}
  StoppedOperator(Interpreter& ps, PostscriptObject* procedure);
  ~StoppedOperator() override;
  void execute(Interpreter& ps) override;

 private:
  const RunningProcedure proc;
};

// - stop -
POSTSCRIPT_OPERATOR(StopOperator, "stop");

void addStopOperators(OperatorRegistry& registry);

}  // namespace postscript
