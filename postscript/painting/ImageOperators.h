// Images. The samples are gathered as they stand, with the names of the filters that still apply,
// and go into the text or, when they are many, become an object. They come in pieces: the operator
// places itself and its source on the execution stack, the source leaves a string, and the operator
// takes it, until it has enough. So an image can span calls.
#pragma once

#include <string>

#include "postscript/engine/OperatorRegistry.h"
#include "postscript/painting/Postscript2Pdf.h"
#include "postscript/values/FilterNames.h"
#include "postscript/values/Held.h"
#include "postscript/values/Text.h"

namespace postscript {

class ArrayObject;
class DictionaryObject;

class Imager {
 protected:
  Imager(NameObject* imageOperator, Postscript2Pdf* pdf);
  Imager(const Imager&) = delete;
  Imager& operator=(const Imager&) = delete;
  ~Imager() { reset(); }

  // Before the operands of a new image are popped.
  void startAfresh(Interpreter& ps);
  void popSize(Interpreter& ps);
  // Takes the source (and the matrix, which is never read) and asks for the first piece.
  void begin(Interpreter& ps, PostscriptObject* source, PostscriptObject* matrix);
  void receiveData(Interpreter& ps);
  // Tells the observer when the image's own matrix would place it otherwise.
  void reportMatrix(const Interpreter& ps, const PostscriptObject* matrix) const;

  bool awaitingData = false;
  int32_t width = 0;
  int32_t height = 0;
  int32_t bitsPerComponent = 0;
  int32_t sourceCount = 1;  // strings a round
  int32_t components = 0;

 private:
  void reset();
  void startFetch(Interpreter& ps);
  void takeString(Interpreter& ps);
  void nameFilters(const FilterNames& filters);
  // From three sources, one byte of each in turn.
  void takeThreeStrings(Interpreter& ps);
  void makeRoom(size_t more);
  int32_t targetLength() const;
  void emit();
  void emitObject();
  void emitInline();

  NameObject* const self_;
  Postscript2Pdf* const pdfConverter_;
  ColorMode imageColorMode = ColorMode::unknown;
  Text imageData;
  BudgetShare dataShare_;
  PostscriptObject* dataSource = nullptr;   // counted
  PostscriptObject* imageMatrix = nullptr;  // counted
  std::string filterText;
  BudgetShare filterShare_;
};

// width height bits matrix source image -; dict image -
class ImageOperator : public NameObject, public Postscript2PdfObject, public Imager {
 public:
  explicit ImageOperator(Postscript2Pdf* pdf)
      : NameObject("image"), Postscript2PdfObject(pdf), Imager(this, pdf) {}
  void execute(Interpreter& ps) override;

 private:
  void beginFromDictionary(Interpreter& ps, const DictionaryObject& image);
};

// width height bits matrix source.. multi components colorimage -
class ColorimageOperator : public NameObject, public Postscript2PdfObject, public Imager {
 public:
  explicit ColorimageOperator(Postscript2Pdf* pdf)
      : NameObject("colorimage"), Postscript2PdfObject(pdf), Imager(this, pdf) {}
  void execute(Interpreter& ps) override;
};

void addImageOperators(OperatorRegistry& registry, Postscript2Pdf* converter);

}  // namespace postscript
