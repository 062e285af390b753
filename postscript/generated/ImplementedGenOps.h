// ImplementedGenOps: the operations of the generated layer that do something.
#pragma once

#include "postscript/generated/GeneratedOps.h"

namespace postscript {

class ImplementedGenOps : public generated::GeneratedOps {
 public:
  explicit ImplementedGenOps(Interpreter& interpreter) : interpreter_(&interpreter) {}

  void performCountdictstack(std::tuple<IntegerObject&> objects) override;
  // Not reached: a hand-written operator replaces this one.
  void performCvs(std::tuple<PostscriptObject&, StringObject&, StringObject&> objects) override;
  void performProduct(std::tuple<StringObject&> objects) override;

 private:
  Interpreter* interpreter_;
};

}  // namespace postscript
