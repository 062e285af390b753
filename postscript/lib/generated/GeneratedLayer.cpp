#include "postscript/lib/generated/GeneratedLayer.h"

#include "postscript/lib/generated/GeneratedOps.h"

namespace postscript {

namespace generated {

// Pops from the topmost, which is the last of the types; gives the deepest first.
inline std::tuple<> popOperands(Interpreter&, Gives<>) {
  return {};
}
template <class First, class... Rest>
auto popOperands(Interpreter& ps, Gives<First, Rest...>) {
  auto rest = popOperands(ps, Gives<Rest...>());
  auto first = First::pop(ps);
  return std::tuple_cat(std::make_tuple(std::move(first)), std::move(rest));
}

// What every operator of the layer does: the results stand on the stack when the slot is called.
template <class... Results, class... Operands>
void runGenerated(Interpreter& ps, Gives<Results...> (*)(Operands...),
                  void (GeneratedOps::*slot)(Objects<Gives<Results...>(Operands...)>)) {
  const auto operands = popOperands(ps, Gives<Operands...>());
  const std::tuple<typename Results::Object&...> results{Results::pushDefault(ps)...};
  const auto operandObjects = std::apply(
      [](const auto&... held) { return std::tuple<typename Operands::Object&...>(*held...); },
      operands);
  (ps.generatedOps.get()->*slot)(std::tuple_cat(operandObjects, results));
}

#define GENERATED_OPERATOR(Class, text, ...)                                             \
  class Class##GeneratedOp : public NameObject {                                         \
   public:                                                                               \
    Class##GeneratedOp() : NameObject(text) {}                                           \
    void execute(Interpreter& ps) override {                                             \
      using Signature = __VA_ARGS__;                                                     \
      runGenerated(ps, static_cast<Signature*>(nullptr), &GeneratedOps::perform##Class); \
    }                                                                                    \
  };
#include "postscript/lib/generated/OperatorTable.inc"
#undef GENERATED_OPERATOR

}  // namespace generated

void registerGeneratedLayer(DictionaryStack& dictionaries) {
#define GENERATED_OPERATOR(Class, name, ...) \
  dictionaries.addGeneratedOperator(std::make_unique<generated::Class##GeneratedOp>());
#include "postscript/lib/generated/OperatorTable.inc"
#undef GENERATED_OPERATOR
}

}  // namespace postscript
