#include "postscript/painting/ImageOperators.h"

#include <array>
#include <span>
#include <utility>

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "Postscript2Pdf";

// The longest dictionary of an image's record.
constexpr size_t dictionaryLimit = 299;

ColorMode colorModeFor(int32_t components) {
  switch (components) {
    case 1:
      return ColorMode::gray;
    case 3:
      return ColorMode::rgb;
    case 4:
      return ColorMode::cmyk;
    default:
      return ColorMode::unknown;
  }
}

const char* spaceName(ColorMode mode) {
  if (mode == ColorMode::rgb) {
    return "DeviceRGB";
  }
  return mode == ColorMode::cmyk ? "DeviceCMYK" : "DeviceGray";
}

const char* inlineSpaceName(ColorMode mode) {
  if (mode == ColorMode::rgb) {
    return "RGB";
  }
  return mode == ColorMode::cmyk ? "CMYK" : "G";
}

int32_t integerEntry(const DictionaryObject& image, const char* key, int32_t line,
                     const char* message) {
  const auto* value = as<IntegerObject>(image.body().get(key));
  if (!value) {
    throw Ex(sourceFile, line, message);
  }
  return value->value;
}

// Several sources become one array, which runs them in turn.
Held<ArrayObject> popSources(Interpreter& ps, int32_t count) {
  Held<ArrayObject> sources = ps.hold(new ArrayObject(*ps.memory.current, ArrayData::array));
  const int32_t found = std::min(count, ps.operandStack.size());
  ps.operandStack.moveTop(found, sources->items());
  if (found < count) {
    ps.operandStack.pop();
  }
  return sources;
}

// Whether an array that does not count, and so may hold anything, has these numbers.
bool hasNumbers(const PostscriptObject* object, std::span<const double> numbers) {
  const auto* array = as<ArrayObject>(object);
  if (!array || array->items().size() < static_cast<int32_t>(numbers.size())) {
    return false;
  }
  for (size_t i = 0; i < numbers.size(); ++i) {
    const PostscriptObject* item = array->items().at(static_cast<int32_t>(i));
    const auto* integer = as<IntegerObject>(item);
    const auto* real = as<RealObject>(item);
    if (!(integer && integer->value == numbers[i]) && !(real && real->value == numbers[i])) {
      return false;
    }
  }
  return true;
}

void reportDifference(const Interpreter& ps, ImageDifference difference) {
  if (ps.observer) {
    ps.observer->imageDiffers(difference);
  }
}

// Operators that are only listed have no converter.
Budget* budgetOf(Postscript2Pdf* pdf) {
  return pdf ? &pdf->interpreter->memory.budget : nullptr;
}

}  // namespace

Imager::Imager(NameObject* imageOperator, Postscript2Pdf* pdf)
    : self_(imageOperator),
      pdfConverter_(pdf),
      dataShare_(budgetOf(pdf)),
      filterShare_(budgetOf(pdf)) {}

void Imager::reset() {
  awaitingData = false;
  sourceCount = 1;
  components = 0;
  imageColorMode = ColorMode::unknown;
  imageData = {};
  dataShare_.resize(0);
  filterText = {};
  filterShare_.resize(0);
  if (dataSource) {
    giveUp(std::exchange(dataSource, nullptr));
  }
  if (imageMatrix) {
    giveUp(std::exchange(imageMatrix, nullptr));
  }
}

// An image that came to no end never gives its source's count back. That shows in what the read
// operators do with a string, if anybody else has it.
void Imager::startAfresh(Interpreter& ps) {
  if (dataSource && dataSource->type == TypeTag::string && dataSource->refCount > 1) {
    ps.memory.keepCount(*dataSource);
  }
  reset();
}

void Imager::popSize(Interpreter& ps) {
  bitsPerComponent = popIntegerObject(ps)->value;
  height = popIntegerObject(ps)->value;
  width = popIntegerObject(ps)->value;
}

void Imager::begin(Interpreter& ps, PostscriptObject* source, PostscriptObject* matrix) {
  dataSource = source;
  ++dataSource->refCount;
  imageMatrix = matrix;
  if (imageMatrix) {
    ++imageMatrix->refCount;
  }
  startFetch(ps);
}

// The unit square, its rows from the top, is what PDF paints an image in.
void Imager::reportMatrix(const Interpreter& ps, const PostscriptObject* matrix) const {
  const double columns = width;
  const double rows = height;
  if (ps.observer && !hasNumbers(matrix, std::array{columns, 0.0, 0.0, -rows, 0.0, rows})) {
    reportDifference(ps, ImageDifference::matrixIgnored);
  }
}

void Imager::startFetch(Interpreter& ps) {
  ps.executionStack.pushChecked(self_);
  ps.executionStack.pushChecked(dataSource);
  awaitingData = true;
  dataSource->executable = true;
  if (auto* array = as<ArrayObject>(dataSource)) {
    array->execIndex = 0;
    for (int32_t i = 0; i < array->items().size(); ++i) {
      makeRunnable(array->items().at(i));
    }
  }
}

void Imager::receiveData(Interpreter& ps) {
  awaitingData = false;
  imageColorMode = colorModeFor(components);
  // An image of any other number of components vanishes, and its data stay on the stack.
  if (imageColorMode == ColorMode::unknown) {
    return;
  }
  if (sourceCount == 1) {
    takeString(ps);
  } else if (sourceCount == 3) {
    takeThreeStrings(ps);
  } else {
    throw Ex(sourceFile, 2467, "unsupported image color seperation");
  }
  if (static_cast<int64_t>(imageData.size()) >= targetLength()) {
    emit();
    reset();
  } else if (dataSource->type != TypeTag::string) {
    startFetch(ps);
  } else {
    throw Ex(sourceFile, 2475, "invalid data in image, excpecting proc");
  }
}

void Imager::takeString(Interpreter& ps) {
  const auto string = popStringObject(ps);
  nameFilters(string->filters());
  if (imageData.empty() && string->isAlone()) {
    imageData = string->body().takeText();
    dataShare_.resize(imageData.capacity());
    return;
  }
  makeRoom(string->view().size());
  imageData += string->view();
}

void Imager::nameFilters(const FilterNames& filters) {
  constexpr std::string_view opening = "/Filter [", beforeName = " /", closing = "] ";
  filterText.clear();
  if (filters.empty()) {
    return;
  }
  size_t length = opening.size() + closing.size();
  filters.forEach([&](std::string_view filter) { length += beforeName.size() + filter.size(); });
  filterShare_.expectText(filterText, length);
  filterText.reserve(length);
  filterText += opening;
  filters.forEach([&](std::string_view filter) { filterText.append(beforeName).append(filter); });
  filterText += closing;
}

void Imager::takeThreeStrings(Interpreter& ps) {
  const auto first = popStringObject(ps);
  const auto second = popStringObject(ps);
  const auto third = popStringObject(ps);
  const size_t length = first->text().size();
  if (second->text().size() != length || third->text().size() != length) {
    throw Ex(sourceFile, 2443, "exepecting strings to be same size");
  }
  makeRoom(3 * length);
  // The string popped first is the source named last: the order is reversed.
  for (size_t i = 0; i < length; ++i) {
    imageData += first->text()[i];
    imageData += second->text()[i];
    imageData += third->text()[i];
  }
}

// For all of the image when enough of it has come, so that the samples move seldom and the record
// has no room to spare. What a program claims of its image's size alone takes no memory.
void Imager::makeRoom(size_t more) {
  constexpr size_t trust = 64;
  const size_t needed = imageData.size() + more;
  checkStringSize(needed);
  if (needed > imageData.capacity()) {
    const auto target = static_cast<size_t>(std::max(targetLength(), 0));
    const size_t room = std::max(needed, std::min(target, trust * needed));
    dataShare_.expectText(imageData, room);
    imageData.reserve(room);
  }
}

// Rows are not padded to bytes, and the product wraps: a negative target is reached at once.
int32_t Imager::targetLength() const {
  const int32_t perColumn =
      wrappingMultiply(wrappingMultiply(bitsPerComponent, height), components);
  return wrappingMultiply(perColumn, width) / 8;
}

void Imager::emit() {
  if (imageColorMode == ColorMode::unknown) {
    imageColorMode = imageColorModeOf(pdfConverter_->topState());
  }
  if (imageData.size() > Postscript2Pdf::inlineImageLimit && !pdfConverter_->inPattern) {
    emitObject();
  } else {
    emitInline();
  }
}

void Imager::emitObject() {
  std::string dictionary = "/Type /XObject /Subtype /Image /BitsPerComponent " +
                           std::to_string(bitsPerComponent) + " /Width " + std::to_string(width) +
                           " /Height " + std::to_string(height) + " /ColorSpace /" +
                           spaceName(imageColorMode) + " " + filterText.substr(0, dictionaryLimit);
  if (dictionary.size() > dictionaryLimit) {
    dictionary.resize(dictionaryLimit);
  }
  const size_t dictionarySize = dictionary.size();
  pdfConverter_->objectShare.take(dictionarySize);
  const PdfObjectList::NamedImage image = pdfConverter_->pdfObjects->nameImage(
      "/PSI", {TQP_IMAGE, std::move(dictionary), std::move(imageData), filterText.empty() ? 1 : 0,
               nullptr});
  if (image.isNew) {
    pdfConverter_->objectShare.takeData(dataShare_);
  } else {
    pdfConverter_->objectShare.giveBack(dictionarySize);
  }
  pdfConverter_->write(image.name, " Do\n");
}

void Imager::emitInline() {
  pdfConverter_->write("q BI\n/W ", width, " /H ", height, " /BPC ", bitsPerComponent, " /CS /",
                       inlineSpaceName(imageColorMode), " ", filterText, "\nID\n", imageData,
                       "\nEI\nQ\n");
}

void ImageOperator::execute(Interpreter& ps) {
  if (awaitingData) {
    return receiveData(ps);
  }
  startAfresh(ps);
  const Held<> operand = popObject(ps);
  if (const auto* image = as<DictionaryObject>(operand.get())) {
    return beginFromDictionary(ps, *image);
  }
  const auto matrix = popAs<ArrayObject>(ps, "image");
  components = imageComponents(converter->topState());
  popSize(ps);
  reportMatrix(ps, matrix.get());
  if (components != 1) {
    reportDifference(ps, ImageDifference::componentsOfColor);
  }
  begin(ps, operand.get(), matrix.get());
}

void ImageOperator::beginFromDictionary(Interpreter& ps, const DictionaryObject& image) {
  PostscriptObject* source = image.body().get("DataSource");
  if (!source) {
    throw Ex(sourceFile, 2698, "expecting datasource");
  }
  width = integerEntry(image, "Width", 2702, "expecting width");
  height = integerEntry(image, "Height", 2705, "expecting height");
  bitsPerComponent = integerEntry(image, "BitsPerComponent", 2709, "expecting bitsPerComponent");
  const auto* decode = as<ArrayObject>(image.body().get("Decode"));
  if (!decode) {
    throw Ex(sourceFile, 2713, "exepected deocde array in image dict");
  }
  components = decode->items().size() / 2;
  const auto* multiple = as<BooleanObject>(image.body().get("MultipleDataSources"));
  if (multiple && multiple->value) {
    sourceCount = components;
  }
  reportMatrix(ps, image.body().get("ImageMatrix"));
  constexpr std::array<double, 8> plainDecode{0, 1, 0, 1, 0, 1, 0, 1};
  if (components <= 4 && ps.observer &&
      !hasNumbers(decode, std::span(plainDecode).first(static_cast<size_t>(components) * 2))) {
    reportDifference(ps, ImageDifference::decodeIgnored);
  }
  begin(ps, source, nullptr);
}

void ColorimageOperator::execute(Interpreter& ps) {
  if (awaitingData) {
    return receiveData(ps);
  }
  startAfresh(ps);
  components = popIntegerObject(ps)->value;
  if (popBooleanObject(ps)->value) {
    sourceCount = components;
  }
  const Held<> source = sourceCount < 2 ? popObject(ps) : Held<>(popSources(ps, sourceCount));
  const auto matrix = popAs<ArrayObject>(ps, "colorimage");
  popSize(ps);
  reportMatrix(ps, matrix.get());
  if (sourceCount == 3) {
    reportDifference(ps, ImageDifference::colorsReversed);
  }
  begin(ps, source.get(), matrix.get());
}

void addImageOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<ColorimageOperator>(converter);
  registry.add<ImageOperator>(converter);
}

}  // namespace postscript
