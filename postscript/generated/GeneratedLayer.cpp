#include "postscript/generated/GeneratedLayer.h"

#include <initializer_list>
#include <iterator>
#include <utility>
#include <vector>

#include "postscript/generated/GeneratedOps.h"
#include "postscript/generated/OperatorRows.h"

namespace postscript {

namespace generated {

// The objects of one execution. They are taken and made here, once for all signatures.
class GeneratedCall {
 public:
  using Pop = Held<> (*)(Interpreter&);
  using PushDefault = PostscriptObject* (*)(Interpreter&);

  // pops: for the operands, the deepest first. pushes: for the results, in their order.
  GeneratedCall(Interpreter& ps, std::initializer_list<Pop> pops,
                std::initializer_list<PushDefault> pushes) {
    operands.reserve(pops.size());
    for (auto pop = std::rbegin(pops); pop != std::rend(pops); ++pop) {
      operands.push_back((*pop)(ps));
    }
    results.reserve(pushes.size());
    for (const PushDefault push : pushes) {
      results.push_back(push(ps));
    }
  }

  // From the deepest.
  template <class T>
  typename T::Object& operand(size_t index) const {
    return static_cast<typename T::Object&>(*operands[operands.size() - 1 - index]);
  }
  template <class T>
  typename T::Object& result(size_t index) const {
    return static_cast<typename T::Object&>(*results[index]);
  }

 private:
  std::vector<Held<>> operands;  // as they were popped
  std::vector<PostscriptObject*> results;
};

// What every operator of the layer does: the results stand on the stack when the slot is called.
template <class... Results, class... Operands>
void runGenerated(Interpreter& ps, Gives<Results...> (*)(Operands...),
                  void (GeneratedOps::*slot)(Objects<Gives<Results...>(Operands...)>)) {
  const GeneratedCall call(ps, {Operands::pop...}, {Results::pushDefault...});
  [&]<size_t... operand, size_t... result>(std::index_sequence<operand...>,
                                           std::index_sequence<result...>) {
    (ps.generatedOps.get()->*slot)(
        {call.operand<Operands>(operand)..., call.result<Results>(result)...});
  }
  (std::index_sequence_for<Operands...>(), std::index_sequence_for<Results...>());
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
