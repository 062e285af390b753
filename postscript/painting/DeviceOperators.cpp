#include "postscript/painting/DeviceOperators.h"

#include "postscript/engine/Operands.h"
#include "postscript/generated/OperatorRows.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "Postscript2Pdf";

void popSome(Interpreter& ps, int count) {
  for (int i = 0; i < count; ++i) {
    popObject(ps);
  }
}

// True if it is no empty procedure, which would change nothing.
bool popTransfer(Interpreter& ps, int32_t line, const char* message) {
  const Held<> operand = popObject(ps);
  const auto* procedure = as<ArrayObject>(operand.get());
  if (!procedure) {
    throw Ex(sourceFile, line, message);
  }
  return procedure->items().size() > 0;
}

}  // namespace

void SetstrokeadjustOperator::execute(Interpreter& ps) {
  popBooleanObject(ps);
}

void CurrentstrokeadjustOperator::execute(Interpreter& ps) {
  pushBoolean(ps, true);
}

void SetflatOperator::execute(Interpreter& ps) {
  popSome(ps, 1);
}

void CurrentflatOperator::execute(Interpreter& ps) {
  pushReal(ps, 0.2);
}

void SetoverprintOperator::execute(Interpreter& ps) {
  popSome(ps, 1);
}

void CurrentoverprintOperator::execute(Interpreter& ps) {
  pushBoolean(ps, false);
}

void SetscreenOperator::execute(Interpreter& ps) {
  popSome(ps, 3);
}

// Frequency, angle and procedure of four colours.
void SetcolorscreenOperator::execute(Interpreter& ps) {
  popSome(ps, 12);
}

void SethalftoneOperator::execute(Interpreter& ps) {
  popSome(ps, 1);
}

void CurrenthalftoneOperator::execute(Interpreter& ps) {
  const Held<DictionaryObject> halftone = ps.hold(new DictionaryObject(*ps.memory.current));
  halftone->putNew<IntegerObject>("HalftoneType", 1);
  halftone->putNew<IntegerObject>("Frequency", 150);
  halftone->putNew<IntegerObject>("Angle", 45);
  ps.operandStack.pushChecked(halftone.get());
}

void SettransferOperator::execute(Interpreter& ps) {
  if (popTransfer(ps, 1620, "Illegal param type to settransfer")) {
    reportIgnored(ps, OperatorRow::Settransfer);
  }
}

void CurrenttransferOperator::execute(Interpreter& ps) {
  pushArray(ps, ArrayData::procedure);
}

void SetcolortransferOperator::execute(Interpreter& ps) {
  bool changesColors = false;
  for (int i = 0; i < 4; ++i) {
    changesColors |= popTransfer(ps, 1648, "Illegal param type to setcolortransfer");
  }
  if (changesColors) {
    reportIgnored(ps, OperatorRow::Setcolortransfer);
  }
}

void CurrentcolortransferOperator::execute(Interpreter& ps) {
  for (int i = 0; i < 4; ++i) {
    pushArray(ps, ArrayData::procedure);
  }
}

void ShowpageOperator::execute(Interpreter& ps) {
  if (ps.observer) {
    ps.observer->pageShown(converter->contentText.size());
  }
}

void PrintOperator::execute(Interpreter& ps) {
  const auto string = popStringObject(ps);
  ps.printShare.expectText(ps.printBuffer, ps.printBuffer.size() + string->view().size());
  ps.printBuffer.append(string->textToNul());
}

void addDeviceOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<SetscreenOperator>(converter);
  registry.add<SetcolorscreenOperator>(converter);
  registry.add<SethalftoneOperator>(converter);
  registry.add<CurrenthalftoneOperator>(converter);
  registry.add<SetstrokeadjustOperator>(converter);
  registry.add<CurrentstrokeadjustOperator>(converter);
  registry.add<ShowpageOperator>(converter);
  registry.add<SettransferOperator>(converter);
  registry.add<CurrenttransferOperator>(converter);
  registry.add<SetcolortransferOperator>(converter);
  registry.add<CurrentcolortransferOperator>(converter);
  registry.add<SetflatOperator>(converter);
  registry.add<CurrentflatOperator>(converter);
  registry.add<SetoverprintOperator>(converter);
  registry.add<CurrentoverprintOperator>(converter);
  registry.add<PrintOperator>(converter);
}

}  // namespace postscript
