#include "postscript/painting/StateOperators.h"

#include "postscript/engine/Operands.h"

namespace postscript {

void GsaveOperator::execute(Interpreter&) {
  converter->write("q ");
  converter->pushGraphicsState();
}

void GrestoreOperator::execute(Interpreter&) {
  converter->write("Q ");
  converter->popGraphicsState();
}

void SaveOperator::execute(Interpreter& ps) {
  ps.saveLevel = wrappingAdd(ps.saveLevel, 1);
  const uint32_t number = processState().saveCounter++;
  push<VirtualMemoryObject>(ps, "Save " + std::to_string(static_cast<int32_t>(number)), &ps.memory);
  converter->write("q\n");
}

void RestoreOperator::execute(Interpreter& ps) {
  ps.saveLevel = wrappingSubtract(ps.saveLevel, 1);
  popObject(ps);
  converter->write("Q\n");
}

void addStateOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<GsaveOperator>(converter);
  registry.add<GrestoreOperator>(converter);
  registry.add<SaveOperator>(converter);
  registry.add<RestoreOperator>(converter);
}

}  // namespace postscript
