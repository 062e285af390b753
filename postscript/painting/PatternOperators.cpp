#include "postscript/painting/PatternOperators.h"

#include <algorithm>
#include <utility>

#include "postscript/engine/Operands.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "Postscript2Pdf";

double step(const DictionaryObject& pattern, const char* key) {
  const PostscriptObject* value = pattern.body().get(key);
  if (!value) {
    throw Ex(sourceFile, 2968, std::string("expecting ") + key);
  }
  return numberValue(*value);
}

void appendBox(std::string& text, const PostscriptObject& value) {
  const auto* box = as<ArrayObject>(&value);
  if (!box) {
    throw Ex(sourceFile, 2994, "expecting BBox array");
  }
  text += '[';
  for (int32_t i = 0; i < box->items().size(); ++i) {
    formatNumber(text, numberValue(*box->items().at(i)));
    text += ' ';
  }
  text += "]\n";
}

std::string dictionaryText(const DictionaryObject& pattern, const Matrix& matrix) {
  std::string text = "/Type /Pattern\n/Matrix [";
  formatMatrix(text, matrix, "]");
  for (const char* key : {"XStep", "YStep", "PaintType", "PatternType", "TilingType"}) {
    const PostscriptObject* value = pattern.body().get(key);
    if (!value) {
      continue;
    }
    text.append("/").append(key).append(" ");
    formatNumber(text, numberValue(*value));
    text += '\n';
  }
  text += "/BBox ";
  if (const PostscriptObject* box = pattern.body().get("BBox")) {
    appendBox(text, *box);
  }
  return text + "/Resources <<>> ";
}

}  // namespace

void MakepatternOperator::execute(Interpreter& ps) {
  if (pendingPattern) {
    closeCapture();
  } else {
    openCapture(ps);
  }
}

void MakepatternOperator::openCapture(Interpreter& ps) {
  const auto array = popArrayObject(ps);
  const auto pattern = popDictionaryObject(ps);
  if (array->items().size() != 6) {
    throw Ex(sourceFile, 2961, "expecting array of 6 doubles");
  }
  captureStart = converter->contentText.beginPart();
  const Matrix steps{step(*pattern, "XStep"), 0, 0, step(*pattern, "YStep"), 0, 0};
  converter->write("q ");
  converter->writeMatrix(steps);
  const Matrix matrix = matrixFromArray(*array);
  PostscriptObject* paintProc = pattern->body().get("PaintProc");
  enterRecord(*pattern, matrix, paintProc ? pattern.get() : nullptr);
  ps.executionStack.pushChecked(this);
  if (!paintProc) {
    throw Ex(sourceFile, 3005, "expecting paintProc");
  }
  makeRunnable(paintProc);
  converter->patternNames.add(pattern.get(), *pendingPattern);
  ps.operandStack.pushChecked(pattern.get());
  ps.operandStack.pushChecked(pattern.get());
  ps.executionStack.pushChecked(paintProc);
}

// A pattern whose dictionary cannot be written has a number and opens the capture all the same; its
// record has an empty dictionary.
void MakepatternOperator::enterRecord(const DictionaryObject& pattern, const Matrix& matrix,
                                      PostscriptObject* source) {
  PdfObjectContents contents{TQP_PATTERN, {}, {}, 1, nullptr};
  try {
    contents.dictionary = dictionaryText(pattern, matrix);
    contents.source = source;
  } catch (const Ex&) {
    enter(std::move(contents));
    throw;
  }
  enter(std::move(contents));
}

void MakepatternOperator::enter(PdfObjectContents contents) {
  converter->objectShare.take(contents.dictionary.size());
  pendingPattern = converter->pdfObjects->addPdfObject("/PA", std::move(contents));
  converter->inPattern = true;
}

void MakepatternOperator::closeCapture() {
  converter->write("Q\n");
  // A call may have begun since, and with it a new text.
  const size_t start = std::min(captureStart, converter->contentText.size());
  converter->objectShare.take(converter->contentText.size() - start);
  converter->inPattern = false;
  captureStart = 0;
  converter->pdfObjects->complete(*pendingPattern, converter->contentText.takePart(start));
  pendingPattern.reset();
}

void SetpatternOperator::execute(Interpreter& ps) {
  const auto pattern = popDictionaryObject(ps);
  if (const std::string* record = converter->patternNames.nameOf(pattern.get())) {
    converter->write("/Pattern cs\n", *record, " scn\n");
  }
}

void addPatternOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<MakepatternOperator>(converter);
  registry.add<SetpatternOperator>(converter);
}

}  // namespace postscript
