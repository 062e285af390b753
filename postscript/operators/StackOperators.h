// The operators that move objects on the operand stack, and the intervals of arrays and strings.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// - mark -mark-      (and as [)
class MarkOperator : public NameObject {
 public:
  explicit MarkOperator(std::string_view text) : NameObject(text) {}
  void execute(Interpreter& ps) override;
};
// -mark- any.. cleartomark -
POSTSCRIPT_OPERATOR(CleartomarkOperator, "cleartomark");
// -mark- any.. counttomark -mark- any.. integer      (the whole stack when there is no mark)
POSTSCRIPT_OPERATOR(CounttomarkOperator, "counttomark");
// any pop -
POSTSCRIPT_OPERATOR(PopOperator, "pop");
// any dup any clone
POSTSCRIPT_OPERATOR(DupOperator, "dup");
// a b exch b a
POSTSCRIPT_OPERATOR(ExchOperator, "exch");
// a(n-1)..a0 n j roll the rotated group
POSTSCRIPT_OPERATOR(RollOperator, "roll");
// an..a0 n index an..a0 clone of an
POSTSCRIPT_OPERATOR(IndexOperator, "index");
// any.. clear -
POSTSCRIPT_OPERATOR(ClearOperator, "clear");
// any.. count any.. integer
POSTSCRIPT_OPERATOR(CountOperator, "count");
// a1..an n copy a1..an and a clone of each; source destination copy destination
POSTSCRIPT_OPERATOR(CopyOperator, "copy");
// destination index source putinterval -      (a string grows, an array does not)
POSTSCRIPT_OPERATOR(PutintervalOperator, "putinterval");
// array|string index count getinterval a new array|string
POSTSCRIPT_OPERATOR(GetintervalOperator, "getinterval");

void addStackOperators(OperatorRegistry& registry);

}  // namespace postscript
