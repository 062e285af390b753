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
  pendingPattern = converter->pdfObjects->addPdfObject(TQP_PATTERN, "/PA");
  clearings = converter->pdfObjects->clearings();
  converter->inPattern = true;
  pendingPattern->setDictionary(dictionaryText(*pattern, matrix));
  ps.executionStack.pushChecked(this);
  PostscriptObject* paintProc = pattern->body().get("PaintProc");
  if (!paintProc) {
    throw Ex(sourceFile, 3005, "expecting paintProc");
  }
  makeRunnable(paintProc);
  pendingPattern->setSource(pattern.get());
  ps.operandStack.pushChecked(pattern.get());
  ps.operandStack.pushChecked(pattern.get());
  ps.executionStack.pushChecked(paintProc);
}

void MakepatternOperator::closeCapture() {
  // The list may have been emptied in the meantime, by a job that ended elsewhere in the process.
  const bool stands = clearings == converter->pdfObjects->clearings();
  if (stands && pendingPattern->data) {
    throw Ex(sourceFile, 2938, "dont supported nested patterns yet");
  }
  converter->write("Q\n");
  converter->inPattern = false;
  // A call may have begun since, and with it a new text.
  const size_t start = std::min(std::exchange(captureStart, 0), converter->contentText.size());
  std::string content = converter->contentText.takePart(start);
  if (stands) {
    pendingPattern->setData(std::move(content));
  }
  pendingPattern = nullptr;
}

void SetpatternOperator::execute(Interpreter& ps) {
  const auto pattern = popDictionaryObject(ps);
  const StoredPdfObject* record = converter->pdfObjects->findSource(pattern.get());
  if (record) {
    converter->write("/Pattern cs\n", record->name, " scn\n");
  }
}

void addPatternOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<MakepatternOperator>(converter);
  registry.add<SetpatternOperator>(converter);
}

}  // namespace postscript
