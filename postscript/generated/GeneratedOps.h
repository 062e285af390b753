// GeneratedOps: one virtual operation for each operator of the generated layer, in slot order. The
// operator has popped its operands and pushed its default results; the operation may fill those in
// place. It does nothing unless ImplementedGenOps says otherwise.
#pragma once

#include "postscript/generated/Signature.h"

namespace postscript::generated {

class GeneratedOps {
 public:
  virtual ~GeneratedOps();

#define GENERATED_OPERATOR(Class, name, ...) \
  virtual void perform##Class(Objects<__VA_ARGS__>) {}
#include "postscript/generated/OperatorTable.inc"
#undef GENERATED_OPERATOR
};

}  // namespace postscript::generated

namespace postscript {
using generated::GeneratedOps;
}
