// Fonts are looked up by name in one directory, which starts with Helvetica. A font is its
// dictionary: scalefont changes the matrix in it, for everybody who has found it.
#include "postscript/painting/FontOperators.h"

#include "postscript/engine/Operands.h"
#include "postscript/generated/OperatorRows.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "Postscript2Pdf";

DictionaryData& fontDirectory(Interpreter& ps) {
  return ps.dictionaries.fontDirectory->body();
}

ArrayObject& fontMatrix(const DictionaryObject& font, int32_t line) {
  auto* matrix = as<ArrayObject>(font.body().get("FontMatrix"));
  if (!matrix) {
    throw Ex(sourceFile, line, "expected fontmatrix array");
  }
  return *matrix;
}

}  // namespace

void FindfontOperator::execute(Interpreter& ps) {
  const Held<> key = popObject(ps);
  PostscriptObject* font = fontDirectory(ps).get(KeyText(*key));
  if (!font) {
    font = fontDirectory(ps).get("Helvetica");
  }
  if (!font) {
    throw Ex(sourceFile, 1779, "could not find helvetica");
  }
  ps.operandStack.pushChecked(font);
}

void ScalefontOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  const auto* font = as<DictionaryObject>(ps.operandStack.top());
  if (!font) {
    throw Ex(sourceFile, 1804, "expected font dictionary");
  }
  const double scale = numberValue(*operand);
  const ArrayObject& matrix = fontMatrix(*font, 1814);
  const Matrix scaling{scale, 0, 0, scale, 0, 0};
  matrixIntoArray(matrix, multiplyMatrix(matrixFromArray(matrix), scaling));
}

void SetfontOperator::execute(Interpreter& ps) {
  const auto font = popDictionaryObject(ps);
  const Matrix matrix = matrixFromArray(fontMatrix(*font, 1842));
  const auto* fontName = as<NameObject>(font->body().get("FontName"));
  if (!fontName) {
    throw Ex(sourceFile, 1851, "expected nameobject for fontname");
  }
  GraphicsState& state = converter->topState();
  // Of an upright font b is 0, of one turned by a quarter d.
  state.fontSize = matrix.d * 1000.0 + matrix.b * 1000.0;
  state.fontName = FontName(fontName->symbol());
}

// A name that has left the directory comes back with an empty font.
void CurrentfontOperator::execute(Interpreter& ps) {
  const std::string_view fontName = converter->topState().fontName.text();
  if (PostscriptObject* font = fontDirectory(ps).get(fontName)) {
    ps.operandStack.pushChecked(font);
  } else {
    fontDirectory(ps).put(fontName, push<DictionaryObject>(ps, *ps.memory.current));
  }
}

void FontDirectoryOperator::execute(Interpreter& ps) {
  ps.operandStack.pushChecked(ps.dictionaries.fontDirectory);
}

void GlobalFontDirectoryOperator::execute(Interpreter& ps) {
  ps.operandStack.pushChecked(ps.dictionaries.fontDirectory);
}

void ShowOperator::execute(Interpreter& ps) {
  popStringObject(ps);
  reportIgnored(ps, OperatorRow::Show);
}

void StringwidthOperator::execute(Interpreter& ps) {
  const Held<> operand = popObject(ps);
  pushReal(ps, 10.0);
  pushReal(ps, 100.0);
}

void addFontOperators(OperatorRegistry& registry, Postscript2Pdf* converter) {
  registry.add<FindfontOperator>(converter);
  registry.add<ScalefontOperator>(converter);
  registry.add<SetfontOperator>(converter);
  registry.add<FontDirectoryOperator>(converter);
  registry.add<GlobalFontDirectoryOperator>(converter);
  registry.add<ShowOperator>(converter);
  registry.add<StringwidthOperator>(converter);
  registry.add<CurrentfontOperator>(converter);
}

}  // namespace postscript
