// IntegerObject: a signed 32-bit number that wraps.
#pragma once

#include <string>

#include "postscript/values/PostscriptObject.h"

namespace postscript {

class IntegerObject : public PostscriptObject {
 public:
  static constexpr TypeTag tag = TypeTag::integer;

  explicit IntegerObject(int32_t theValue) : PostscriptObject(tag), value(theValue) {
    executable = false;
  }

  std::string describe() const override;
  std::string syntaxText() const override { return std::to_string(value); }
  std::string valueText() const override { return std::to_string(value); }
  PostscriptObject* clone() const override { return new IntegerObject(value); }

  // In place, wrapping; a real number is cut to an integer first. Fails for no number.
  void add(int32_t number);
  void add(double number);
  void add(const PostscriptObject& number);

  int32_t value;
};

}  // namespace postscript
