#include "postscript/operators/ConvertOperators.h"

#include <array>

#include "postscript/engine/Operands.h"
#include "postscript/values/NumberToken.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/ConvertOperators";

// Operators bear the tag of names: "operatortype" is never answered.
const char* publicTypeName(TypeTag tag) {
  static constexpr std::array names = {"booleantype",     "fonttype", "integertype",  "marktype",
                                       "nametype",        "nulltype", "operatortype", "realtype",
                                       "arraytype",       "dicttype", "filetype",     "gstatetype",
                                       "packedarraytype", "savetype", "stringtype"};
  const auto index = static_cast<uint32_t>(tag);
  return index < names.size() ? names[index] : "unknown";
}

int32_t integerOfText(std::string_view text) {
  if (const auto integer = readInteger(text)) {
    return *integer;
  }
  if (const auto real = readReal(text)) {
    return toInt32(*real);
  }
  throw Ex(sourceFile, 41, "Unable to convert in cvi");
}

// A real is tried first; what only an integer can be, such as 16#FF, becomes a real afterwards.
double realOfText(std::string_view text) {
  if (const auto real = readReal(text)) {
    return *real;
  }
  if (const auto integer = readInteger(text)) {
    return *integer;
  }
  throw Ex(sourceFile, 90, "Unable to convert in cvr");
}

}  // namespace

void CviOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  if (const auto* string = as<StringObject>(operand.get())) {
    pushInteger(ps, integerOfText(string->textToNul()));
  } else if (const auto* real = as<RealObject>(operand.get())) {
    pushInteger(ps, toInt32(real->value));
  } else if (const auto* integer = as<IntegerObject>(operand.get())) {
    pushInteger(ps, integer->value);
  } else {
    throw Ex(sourceFile, 34, "Unsupported conversion type for cvi");
  }
}

void CvrOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  if (const auto* string = as<StringObject>(operand.get())) {
    pushReal(ps, realOfText(string->textToNul()));
  } else if (operand->type == TypeTag::real || operand->type == TypeTag::integer) {
    pushReal(ps, numberValue(*operand));
  } else {
    throw Ex(sourceFile, 83, "Unsupported conversion type for cvr");
  }
}

void CvnOperator::execute(Interpreter& ps) {
  const auto string = popAs<StringObject>(ps, "cvn");
  push<NameObject>(ps, ps.memory.symbols, string->textToNul())->executable = string->executable;
}

void CvsOperator::execute(Interpreter& ps) {
  const auto destination = popStringObject(ps);
  const Held<> operand = popObject(ps);
  const std::string text = operand->valueText();
  for (size_t i = 0; i < text.size(); ++i) {
    destination->setByte(i, text[i]);
  }
  pushString(ps, Text(text));
}

// The object itself is changed, and all that hold it see that.
void CvxOperator::execute(Interpreter& ps) {
  const Held<> object = popObject(ps);
  object->executable = true;
  ps.operandStack.pushChecked(object.get());
}

void XcheckOperator::execute(Interpreter& ps) {
  pushBoolean(ps, popObject(ps)->executable);
}

void TypeOperator::execute(Interpreter& ps) {
  const Held<> object = popObject(ps);
  push<NameObject>(ps, publicTypeName(object->type));
}

void addConvertOperators(OperatorRegistry& registry) {
  registry.add<BindOperator>();
  registry.add<CvxOperator>();
  registry.add<XcheckOperator>();
  registry.add<ReadonlyOperator>();
  registry.add<TypeOperator>();
  registry.add<CvrOperator>();
  registry.add<CviOperator>();
  registry.add<CvnOperator>();
  registry.add<CvsOperator>();
}

}  // namespace postscript
