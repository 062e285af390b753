// Tiling patterns. A pattern's content is captured: makepattern notes where the text ends, runs the
// pattern's procedure, and cuts what was written off into a record.
#pragma once

#include <optional>

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/painting/Postscript2Pdf.h"

namespace postscript {

class DictionaryObject;

// dict array makepattern dict      (the same handle, by which setpattern finds the record)
class MakepatternOperator : public NameObject, public Postscript2PdfObject {
 public:
  explicit MakepatternOperator(Postscript2Pdf* pdf)
      : NameObject("makepattern"), Postscript2PdfObject(pdf) {}
  // Runs twice: the second time under the pattern's procedure, to close the capture.
  void execute(Interpreter& ps) override;

 private:
  void openCapture(Interpreter& ps);
  void enterRecord(const DictionaryObject& pattern, const Matrix& matrix, PostscriptObject* source);
  void enter(PdfObjectContents contents);
  void closeCapture();

  size_t captureStart = 0;
  std::optional<PdfObjectList::Place> pendingPattern;  // none when no capture is open
};

// dict setpattern -
PAINTING_OPERATOR(SetpatternOperator, "setpattern");

void addPatternOperators(OperatorRegistry& registry, Postscript2Pdf* converter);

}  // namespace postscript
