// Types and attributes, and the conversions between types. Of the attributes only the executable
// flag is real: objects carry no access.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// number|string cvi integer
POSTSCRIPT_OPERATOR(CviOperator, "cvi");
// number|string cvr real
POSTSCRIPT_OPERATOR(CvrOperator, "cvr");
// string cvn name
POSTSCRIPT_OPERATOR(CvnOperator, "cvn");
// any string cvs a new string
POSTSCRIPT_OPERATOR(CvsOperator, "cvs");
// any cvx any      (executable)
POSTSCRIPT_OPERATOR(CvxOperator, "cvx");
// any xcheck boolean
POSTSCRIPT_OPERATOR(XcheckOperator, "xcheck");
// any type name
POSTSCRIPT_OPERATOR(TypeOperator, "type");

// An operator that leaves its operand as it is.
class IdentityOperator : public NameObject {
 public:
  using NameObject::NameObject;
  void execute(Interpreter&) override {}
};
// any readonly any
class ReadonlyOperator : public IdentityOperator {
 public:
  ReadonlyOperator() : IdentityOperator("readonly") {}
};
// proc bind proc      (names are looked up whenever they run)
class BindOperator : public IdentityOperator {
 public:
  BindOperator() : IdentityOperator("bind") {}
};

void addConvertOperators(OperatorRegistry& registry);

}  // namespace postscript
