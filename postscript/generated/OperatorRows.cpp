#include "postscript/generated/OperatorRows.h"

#include <array>

namespace postscript {
namespace {

constexpr std::array<std::string_view, operatorRows> names{
#define GENERATED_OPERATOR(Class, name, ...) name,
#include "postscript/generated/OperatorTable.inc"
#undef GENERATED_OPERATOR
};

// An operator that is not listed works.
constexpr auto losses = [] {
  std::array<OperatorLoss, operatorRows> table{};
#define OPERATOR_LOSS(Class, lossClass, noun) \
  table[static_cast<size_t>(OperatorRow::Class)] = {LossClass::lossClass, noun};
#include "postscript/generated/OperatorLosses.inc"
#undef OPERATOR_LOSS
  return table;
}();

}  // namespace

std::string_view operatorName(OperatorRow row) {
  return names[static_cast<size_t>(row)];
}

OperatorLoss operatorLoss(OperatorRow row) {
  return losses[static_cast<size_t>(row)];
}

}  // namespace postscript
