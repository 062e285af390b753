#include "postscript/operators/StopOperators.h"

#include "postscript/engine/Operands.h"

namespace postscript {

StoppedOperator::StoppedOperator(Interpreter& ps, PostscriptObject* procedure)
    : NameObject("stopped"), proc(ps, procedure) {}

StoppedOperator::~StoppedOperator() = default;

void StoppedOperator::execute(Interpreter& ps) {
  // The continuation: the procedure has ended by itself.
  if (proc) {
    return pushBoolean(ps, false);
  }
  const Held<> procedure = popObject(ps);
  const auto* array = as<ArrayObject>(procedure.get());
  if (!(array && array->isProcedure()) && !as<NameObject>(procedure.get())) {
    throw Ex("postscript/lib/StopOperators", 40, "Unsupported param type to stopped");
  }
  ps.executionStack.pushNew<StoppedOperator>(ps, procedure.get());
  start(ps, procedure.get());
}

void StopOperator::execute(Interpreter& ps) {
  // Without a stopped around it the stack runs empty, and the pop fails.
  for (;;) {
    const Held<> object = ps.hold(ps.executionStack.pop());
    const auto* context = as<NameObject>(object.get());
    if (context && context->name() == "stopped") {
      return pushBoolean(ps, true);
    }
    makeLiteral(object.get());
  }
}

void addStopOperators(OperatorRegistry& registry) {
  registry.add<StoppedOperator>();
  registry.add<StopOperator>();
}

}  // namespace postscript
