// ImplementedGenOps: the operations of the generated layer that do something.
#pragma once

#include "postscript/generated/GeneratedOps.h"

namespace postscript {

class ImplementedGenOps : public generated::GeneratedOps {
 public:
  explicit ImplementedGenOps(Interpreter& owner) : interpreter(&owner) {}

  void performCountdictstack(std::tuple<IntegerObject&> objects) override;
  // A hand-written operator stands in front of this one.
  void performCvs(std::tuple<PostscriptObject&, StringObject&, StringObject&> objects) override;
  void performProduct(std::tuple<StringObject&> objects) override;

 private:
  Interpreter* interpreter;
};

}  // namespace postscript
