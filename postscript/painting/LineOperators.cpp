// All of these write at once. A dash is put together first, as a wrong element leaves no text.
#include "postscript/painting/LineOperators.h"

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "Postscript2Pdf";

// How long the text of a dash array may be, its opening bracket included.
constexpr size_t dashTextLimit = 370;

}  // namespace

void SetlinewidthOperator::execute(Interpreter& ps) {
  const double width = popNumber(ps);
  converter->topState().lineWidth = width;
  converter->write(width, " w ");
}

void CurrentlinewidthOperator::execute(Interpreter& ps) {
  pushReal(ps, converter->topState().lineWidth);
}

// Any integer is written, as the join is: no number is refused here.
void SetlinecapOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  const auto* cap = as<IntegerObject>(operand.get());
  if (!cap) {
    throw Ex(sourceFile, 1510, "Illegal param type for setlinecap");
  }
  converter->write(cap->value, " J ");
}

void SetlinejoinOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  const auto* join = as<IntegerObject>(operand.get());
  if (!join) {
    throw Ex(sourceFile, 1531, "Illegal param type for setlinejoin");
  }
  converter->write(join->value, " j ");
}

void SetmiterlimitOperator::execute(Interpreter& ps) {
  converter->write(popNumber(ps), " M ");
}

void SetdashOperator::execute(Interpreter& ps) {
  const Held<> offset = popObject(ps);
  const auto array = popArrayObject(ps);
  std::string text = "[";
  for (int32_t i = 0; i < array->items().size(); ++i) {
    formatNumber(text, numberValue(*array->items().at(i)));
    text += ' ';
    if (text.size() > dashTextLimit) {
      throw Ex(sourceFile, 1575, "Out of buffer space in setdashlimit");
    }
  }
  text += "] ";
  formatNumber(text, numberValue(*offset));
  converter->write(text, " d\n");
}

void addLineOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<SetlinewidthOperator>(converter);
  registry.add<SetlinecapOperator>(converter);
  registry.add<SetlinejoinOperator>(converter);
  registry.add<SetmiterlimitOperator>(converter);
  registry.add<SetdashOperator>(converter);
  registry.add<CurrentlinewidthOperator>(converter);
}

}  // namespace postscript
