// Reading from the input itself, and naming filters. A read that finds too little puts its operands
// and itself back and suspends the run; the next run takes it up again with the new bytes. What it
// has gathered by then stands in the operator, of which an interpreter has one.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/operators/EncodedBytes.h"
#include "postscript/values/Budget.h"
#include "postscript/values/NameObject.h"
#include "postscript/values/Text.h"

namespace postscript {

// - currentfile file
POSTSCRIPT_OPERATOR(CurrentfileOperator, "currentfile");
// file read byte true | false      (a NUL byte reads as the end; does not suspend)
POSTSCRIPT_OPERATOR(ReadOperator, "read");

// What a read has gathered so far.
struct PartialText {
  explicit PartialText(Budget& budget) : share(&budget) {}

  Text text;
  BudgetShare share;
};

// file string readstring a new string, boolean
class ReadstringOperator : public NameObject {
 public:
  explicit ReadstringOperator(Budget& budget) : NameObject("readstring"), partial_(budget) {}
  void execute(Interpreter& ps) override;

 private:
  PartialText partial_;
};

// file string readhexstring a new string, boolean
class ReadhexstringOperator : public NameObject {
 public:
  explicit ReadhexstringOperator(Budget& budget) : NameObject("readhexstring"), partial_(budget) {}
  void execute(Interpreter& ps) override;

 private:
  PartialText partial_;
  int32_t pendingDigit = noDigit;  // a first digit whose second has not come yet
};

// file string readline a new string, boolean
POSTSCRIPT_OPERATOR(ReadlineOperator, "readline");
// source name filter file; source count string /SubFileDecode filter file
POSTSCRIPT_OPERATOR(FilterOperator, "filter");

void addFileOperators(OperatorRegistry& registry, Budget& budget);

}  // namespace postscript
