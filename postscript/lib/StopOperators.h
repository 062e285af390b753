// stop and stopped. stopped sees stop alone: a failure leaves the engine whatever is open.
#ifndef POSTSCRIPT_LIB_STOPOPERATORS_H
#define POSTSCRIPT_LIB_STOPOPERATORS_H

#include "postscript/lib/LoopOperators.h"

namespace postscript {

// proc stopped boolean
class StoppedOperator : public NameObject {
 public:
  explicit StoppedOperator(PostscriptObject* procedure = nullptr);
  ~StoppedOperator() override;
  void execute(Interpreter& ps) override;

 private:
  const RunningProcedure proc;
};

// - stop -
POSTSCRIPT_OPERATOR(StopOperator, "stop");

}  // namespace postscript

#endif
