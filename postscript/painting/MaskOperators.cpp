#include "postscript/painting/MaskOperators.h"

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {

// The samples: the value of a name, the first element of a procedure, or the string itself.
const StringObject* samplesOf(Interpreter& ps, PostscriptObject* source) {
  if (const auto* name = as<NameObject>(source)) {
    return as<StringObject>(ps.dictionaries.lookup(name->name()));
  }
  if (const auto* array = as<ArrayObject>(source)) {
    return as<StringObject>(array->items().at(0));
  }
  return as<StringObject>(source);
}

}  // namespace

void ImagemaskOperator::execute(Interpreter& ps) {
  const Held<> source = popObject(ps);
  const StringObject* samples = samplesOf(ps, source.get());
  if (!samples) {
    throw Ex("Postscript2Pdf", 2293, "Could not find image mask data source string");
  }
  const auto matrix = popAs<ArrayObject>(ps, "imagemask");
  const auto polarity = popAs<BooleanObject>(ps, "imagemask");
  const auto height = popAs<IntegerObject>(ps, "imagemask height");
  const auto width = popAs<IntegerObject>(ps, "imagemask width");
  converter->write("BI\n/W ", width->value, " /H ", height->value,
                   " /BPC 1 /ImageMask true /Decode ", polarity->value ? "[1 0]" : "[0 1]", " ");
  if (!samples->filters().empty()) {
    converter->write("/Filter [");
    samples->filters().forEach(
        [&](std::string_view filter) { converter->write("/", filter, " "); });
    converter->write("] ");
  }
  converter->write("\nID\n", samples->textToNul(), "\nEI\n");
}

void addMaskOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<ImagemaskOperator>(converter);
}

}  // namespace postscript
