#include "postscript/generated/GeneratedLayer.h"

#include <array>
#include <utility>

#include "postscript/generated/GeneratedOps.h"
#include "postscript/generated/OperatorRows.h"

namespace postscript {

namespace generated {

// What every operator of the layer does: the results are on the stack when the slot is called. The
// operands are popped from the topmost down; as an array's elements go from its end, the deepest is
// released first.
template <class... Results, class... Operands, size_t... operand, size_t... result>
void runGenerated(Interpreter& ps, Gives<Results...> (*)(Operands...),
                  void (GeneratedOps::*slot)(Objects<Gives<Results...>(Operands...)>),
                  std::index_sequence<operand...>, std::index_sequence<result...>) {
  constexpr size_t count = sizeof...(Operands);
  using Pop = Held<> (*)(Interpreter&);
  [[maybe_unused]] constexpr std::array<Pop, count> pops{Operands::pop...};
  [[maybe_unused]] const std::array<Held<>, count> operands{pops[count - 1 - operand](ps)...};
  [[maybe_unused]] const std::array<PostscriptObject*, sizeof...(Results)> results{
      Results::pushDefault(ps)...};
  (ps.generatedOps.get()->*slot)(
      {static_cast<typename Operands::Object&>(*operands[count - 1 - operand])...,
       static_cast<typename Results::Object&>(*results[result])...});
}

template <class... Results, class... Operands>
void runGenerated(Interpreter& ps, Gives<Results...> (*signature)(Operands...),
                  void (GeneratedOps::*slot)(Objects<Gives<Results...>(Operands...)>)) {
  runGenerated(ps, signature, slot, std::index_sequence_for<Operands...>(),
               std::index_sequence_for<Results...>());
}

#define GENERATED_OPERATOR(Class, text, ...)                                             \
  class Class##GeneratedOp : public NameObject {                                         \
   public:                                                                               \
    Class##GeneratedOp() : NameObject(text) {}                                           \
    void execute(Interpreter& ps) override {                                             \
      using Signature = __VA_ARGS__;                                                     \
      runGenerated(ps, static_cast<Signature*>(nullptr), &GeneratedOps::perform##Class); \
      reportIgnored(ps, OperatorRow::Class);                                             \
    }                                                                                    \
  };
#include "postscript/generated/OperatorTable.inc"
#undef GENERATED_OPERATOR

}  // namespace generated

void registerGeneratedLayer(DictionaryStack& dictionaries) {
#define GENERATED_OPERATOR(Class, name, ...) \
  dictionaries.addGeneratedOperator(std::unique_ptr<NameObject>(new generated::Class##GeneratedOp));
#include "postscript/generated/OperatorTable.inc"
#undef GENERATED_OPERATOR
}

}  // namespace postscript
