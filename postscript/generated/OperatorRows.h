// OperatorRows: the lines of the generated layer's table by name, and what it costs a page that an
// operator takes its operands and does nothing.
#pragma once

#include <cstddef>
#include <string_view>

#include "postscript/engine/Interpreter.h"

namespace postscript {

enum class OperatorRow : uint16_t {
#define GENERATED_OPERATOR(Class, name, ...) Class,
#include "postscript/generated/OperatorTable.inc"
#undef GENERATED_OPERATOR
  count
};

constexpr size_t operatorRows = static_cast<size_t>(OperatorRow::count);

enum class LossClass : uint8_t {
  works,     // it does what it should
  text,      // text that is not painted
  painting,  // paint, or state that later paint depends on
  value,     // its result is a fixed one, so that what is computed from it comes out different
  setup,     // the page's or the device's set-up
  harmless,  // nothing that a page shows
};

struct OperatorLoss {
  LossClass lossClass = LossClass::works;
  // What a person calls one of the things that are lost; empty where the name says it.
  std::string_view noun;
};

std::string_view operatorName(OperatorRow row);
OperatorLoss operatorLoss(OperatorRow row);

// For operators that do nothing, also those that are written by hand. The few lines of the layer
// that work are not reported.
inline void reportIgnored(const Interpreter& ps, OperatorRow row) {
  if (ps.observer && operatorLoss(row).lossClass != LossClass::works) {
    ps.observer->ignored(row);
  }
}

}  // namespace postscript
