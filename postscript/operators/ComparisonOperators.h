// Comparison.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

class Comparer {
 public:
  // Below, at or above 0. Numbers, strings (to their first NUL), names, and booleans, which also
  // compare with integers. Fails for any other pair.
  static int32_t compare(const PostscriptObject& a, const PostscriptObject& b);

 protected:
  // Pops b and a, and compares.
  static int32_t comparePopped(Interpreter& ps);
  // Pops b and a. Dictionaries and arrays are equal when their contents are.
  static bool equal(Interpreter& ps);
};

#define POSTSCRIPT_COMPARISON(Class, text)           \
  class Class : public NameObject, public Comparer { \
   public:                                           \
    Class() : NameObject(text) {}                    \
    void execute(Interpreter& ps) override;          \
  }

// a b ge boolean
POSTSCRIPT_COMPARISON(GeOperator, "ge");
// a b gt boolean
POSTSCRIPT_COMPARISON(GtOperator, "gt");
// a b le boolean
POSTSCRIPT_COMPARISON(LeOperator, "le");
// a b lt boolean
POSTSCRIPT_COMPARISON(LtOperator, "lt");
// a b eq boolean
POSTSCRIPT_COMPARISON(EqOperator, "eq");
// a b ne boolean
POSTSCRIPT_COMPARISON(NeOperator, "ne");

void addComparisonOperators(OperatorRegistry& registry);

}  // namespace postscript
