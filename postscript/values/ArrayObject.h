// ArrayObject: arrays, and procedures, which are arrays of another kind. How far a running
// procedure has come stands in the handle: two runs of one handle share one position.
#pragma once

#include <string>

#include "postscript/values/CompositeObject.h"
#include "postscript/values/ObjectStack.h"

namespace postscript {

class ArrayData : public CompositeData {
 public:
  static constexpr char procedure = '{';
  static constexpr char array = '[';

  ArrayData(Budget& budget, char arrayKind)
      : CompositeData(TypeTag::array),
        kind(arrayKind),
        items(arrayKind == procedure ? "Array { Stack" : "Array [ Stack", &budget),
        share_(&budget, bytesOfArray) {}
  ~ArrayData() override;

  void forEachElement(const Visit& visit) const override { items.forEachObject(visit); }
  void clearContents() override {
    items.clear();
    share_.resize(0);
  }

  const char kind;
  ObjectStack items;  // element 0 at the bottom

 private:
  // What an array takes besides its elements: body and handle.
  static constexpr size_t bytesOfArray = 208;

  BudgetShare share_;
};

class ArrayObject : public CompositeObject {
 public:
  static constexpr TypeTag tag = TypeTag::array;

  ArrayObject(VirtualMemoryObject& space, char kind);

  // One step of a running array: places itself and its next element on the execution stack.
  void execute(Interpreter& ps) override;
  std::string describe() const override;
  // "[1 2 3 ]", of procedures too. Fails for what is nested too deep (or in itself) to print.
  std::string syntaxText() const override;
  PostscriptObject* clone() const override { return new ArrayObject(*this); }

  ObjectStack& items() const { return static_cast<ArrayData*>(data)->items; }
  bool isProcedure() const { return static_cast<ArrayData*>(data)->kind == ArrayData::procedure; }
  // Fails outside the array.
  PostscriptObject* element(int32_t index) const;

  int32_t execIndex = 0;

 private:
  ArrayObject(const ArrayObject& source);
};

// A procedure is set to run from its start; anything else stays as it is.
inline void makeRunnable(PostscriptObject* object) {
  auto* array = as<ArrayObject>(object);
  if (array && array->isProcedure()) {
    array->executable = true;
    array->execIndex = 0;
  }
}
// A procedure is literal and at its start again; anything else stays as it is.
void makeLiteral(PostscriptObject* object);

}  // namespace postscript
