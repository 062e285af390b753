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

template <class Signature, void (GeneratedOps::*slot)(Objects<Signature>)>
class GeneratedOp;
template <class... Results, class... Operands,
          void (GeneratedOps::*slot)(Objects<Gives<Results...>(Operands...)>)>
class GeneratedOp<Gives<Results...>(Operands...), slot> : public NameObject {
 public:
  using NameObject::NameObject;
  void execute(Interpreter& ps) override {
    const auto operands = popOperands(ps, Gives<Operands...>());
    const std::tuple<typename Results::Object&...> results{Results::pushDefault(ps)...};
    const auto operandObjects = std::apply(
        [](const auto&... held) { return std::tuple<typename Operands::Object&...>(*held...); },
        operands);
    (ps.generatedOps.get()->*slot)(std::tuple_cat(operandObjects, results));
  }
};

#define GENERATED_OPERATOR(Class, name, ...)                                                  \
  class Class##GeneratedOp : public GeneratedOp<__VA_ARGS__, &GeneratedOps::perform##Class> { \
   public:                                                                                    \
    Class##GeneratedOp() : GeneratedOp(name) {}                                               \
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
