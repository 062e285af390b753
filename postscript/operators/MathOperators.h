// Arithmetic. Integers wrap at 32 bits and never become reals.
#pragma once

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/values/NameObject.h"

namespace postscript {

// The binary operators: two integers, or reals as soon as one operand is real. The operands stand
// in the operator for the length of a call, the deeper one in A.
class MathOperator {
 protected:
  ~MathOperator() = default;
  // Fills in the operands and calls calcReal or calcInteger of the operator.
  template <class Operator>
  static void calc(Operator& self, Interpreter& ps);
  [[noreturn]] static void failCalc(Interpreter& ps);

  double realA = 0;
  double realB = 0;
  int32_t intA = 0;
  int32_t intB = 0;
};

// sin and cos: of degrees.
class TrigOperator {
 public:
  void calc(Interpreter& ps);

 protected:
  ~TrigOperator() = default;
  virtual double valueAt(double degrees) = 0;
};

#define POSTSCRIPT_BINARY_OPERATOR(Class, text)          \
  class Class : public NameObject, public MathOperator { \
   public:                                               \
    Class() : NameObject(text) {}                        \
    void execute(Interpreter& ps) override;              \
                                                         \
   private:                                              \
    friend class MathOperator;                           \
    void calcReal(Interpreter& ps) const;                \
    void calcInteger(Interpreter& ps) const;             \
  }

#define POSTSCRIPT_TRIG_OPERATOR(Class, text)            \
  class Class : public NameObject, public TrigOperator { \
   public:                                               \
    Class() : NameObject(text) {}                        \
    void execute(Interpreter& ps) override { calc(ps); } \
                                                         \
   protected:                                            \
    double valueAt(double degrees) override;             \
  }

// a b add number
POSTSCRIPT_BINARY_OPERATOR(AddOperator, "add");
// a b sub number
POSTSCRIPT_BINARY_OPERATOR(SubOperator, "sub");
// a b mul number
POSTSCRIPT_BINARY_OPERATOR(MulOperator, "mul");
// a b div real      (no divisor is tested)
POSTSCRIPT_BINARY_OPERATOR(DivOperator, "div");
// a b idiv integer      (takes reals too)
POSTSCRIPT_BINARY_OPERATOR(IdivOperator, "idiv");
// integer integer mod integer      (without its sign)
POSTSCRIPT_OPERATOR(ModOperator, "mod");
// number neg number
POSTSCRIPT_OPERATOR(NegOperator, "neg");
// number abs number
POSTSCRIPT_OPERATOR(AbsOperator, "abs");
// number ceiling number
POSTSCRIPT_OPERATOR(CeilingOperator, "ceiling");
// number floor number
POSTSCRIPT_OPERATOR(FloorOperator, "floor");
// number round number      (ties go away from zero)
POSTSCRIPT_OPERATOR(RoundOperator, "round");
// number sqrt real
POSTSCRIPT_OPERATOR(SqrtOperator, "sqrt");
// degrees sin real
POSTSCRIPT_TRIG_OPERATOR(SinOperator, "sin");
// degrees cos real
POSTSCRIPT_TRIG_OPERATOR(CosOperator, "cos");
// num den atan degrees      (from -180 to 180)
POSTSCRIPT_OPERATOR(AtanOperator, "atan");

void addMathOperators(OperatorRegistry& registry);

}  // namespace postscript
