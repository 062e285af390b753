// Postscript2Pdf: the converter. It owns an interpreter whose painting operators append PDF text to
// `contentText` as they run, and the stack of tracked graphics states. Nothing is buffered: paths
// exist as text only. Start at convert.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "postscript/painting/ArcPieces.h"
#include "postscript/painting/ContentText.h"
#include "postscript/painting/ContentWriter.h"
#include "postscript/painting/GraphicsState.h"
#include "postscript/painting/PatternNames.h"
#include "postscript/painting/PdfObjectShare.h"
#include "postscript/painting/ProcessState.h"
#include "postscript/values/NameObject.h"

namespace postscript {

class Interpreter;

class Postscript2Pdf {
 public:
  // matrix: six numbers, the page's default coordinate system. The interpreter has no operators
  // yet; openConverter makes a complete converter.
  explicit Postscript2Pdf(const float* matrix);
  Postscript2Pdf(const Postscript2Pdf&) = delete;
  Postscript2Pdf& operator=(const Postscript2Pdf&) = delete;
  ~Postscript2Pdf();

  // The calls of the library's users (see include/tqpumpd2k.h).
  void startPage(const float* matrix);
  const char* convert(const char* bytes, int32_t* length) noexcept;
  // For embedders in C++: runs a piece whose text follows that of the pieces before it. False if it
  // fails; `contentText` keeps what was written up to then.
  bool convertOn(std::string_view piece) noexcept;
  PdfObject* const* getPdfObjects(uint64_t* count) {
    return pdfObjects->handOut(handedOut_, count);
  }

  GraphicsState& topState() { return graphicsStates.back(); }
  void pushDefaultGraphicsState();
  void pushGraphicsState();
  // There is always a state: popping the last leaves a fresh one.
  void popGraphicsState();
  void resetGraphicsStates();

  // Appends numbers and texts in the order given.
  template <class... Parts>
  void write(const Parts&... parts) {
    writeParts(contentText, parts...);
  }
  // The current point, with the letter of its operator.
  void writePoint(char letter);
  void writeCurve(double x1, double y1, double x2, double y2, double x3, double y3);
  void writeMatrix(const Matrix& matrix);
  // text: a literal.
  void writeClip(std::string_view text) { contentText.insertClip(text); }
  // Writes a moveto that was only remembered.
  void flushMoveto();

  // An image of more bytes than this becomes an object.
  static constexpr uint64_t inlineImageLimit = 4000;

  std::vector<GraphicsState> graphicsStates;  // never empty between calls
  Matrix pageMatrix;
  std::unique_ptr<Interpreter> interpreter;
  std::string errorText;
  ContentText contentText;
  PdfObjectList* const pdfObjects = &processState().pdfObjects;
  PdfObjectShare objectShare;
  PatternNames patternNames{*pdfObjects};
  bool pendingMoveto = false;
  bool inPattern = false;
  ArcPieces arcPieces;

 private:
  // Whether the work was done; if not, the failure is told.
  template <class Work>
  bool succeeds(const Work& work) noexcept;
  void run(std::string_view piece);
  void reportFailure(std::string_view words) const;

  BudgetShare statesShare_;
  HandedOutPdfObjects handedOut_;
};

// The base of every painting operator.
class Postscript2PdfObject {
 public:
  explicit Postscript2PdfObject(Postscript2Pdf* owner) : converter(owner) {}

 protected:
  Postscript2Pdf* const converter;
};

// The class of a painting operator without state of its own, as POSTSCRIPT_OPERATOR; and of one
// that has further bases, the first of which knows the converter.
#define PAINTING_OPERATOR(Class, text) PAINTING_OPERATOR_OF(Class, text, Postscript2PdfObject)
#define PAINTING_OPERATOR_OF(Class, text, Base, ...)                              \
  class Class : public NameObject, public Base __VA_OPT__(, public) __VA_ARGS__ { \
   public:                                                                        \
    explicit Class(Postscript2Pdf* pdf) : NameObject(text), Base(pdf) {}          \
    void execute(Interpreter& ps) override;                                       \
  }

}  // namespace postscript
