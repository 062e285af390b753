// RealObject: a 64-bit floating-point number.
#pragma once

#include <string>

#include "postscript/values/PostscriptObject.h"

namespace postscript {

class RealObject : public PostscriptObject {
 public:
  static constexpr TypeTag tag = TypeTag::real;

  explicit RealObject(double theValue) : PostscriptObject(tag), value(theValue) {
    executable = false;
  }

  std::string describe() const override;
  // With six decimals. = does not show reals: valueText stays the default.
  std::string syntaxText() const override;
  PostscriptObject* clone() const override { return new RealObject(value); }

  // In place. Fails for no number.
  void add(double number) { value += number; }
  void add(const PostscriptObject& number);

  double value;
};

}  // namespace postscript
