#include "tools/quillpress/Converter.h"

#include <algorithm>

#include "postscript/converter/OpenConverter.h"
#include "postscript/engine/Interpreter.h"
#include "postscript/painting/ProcessState.h"

namespace quillpress {
namespace {

// Any operator that writes does; it comes from systemdict because a program may have given its name
// another meaning.
constexpr std::string_view probe = "10 systemdict /setmiterlimit get exec\n";
constexpr std::string_view probeText = "10 M ";

}  // namespace

Converter::Converter(const Matrix& matrix, Watch& watch) : watch_(watch) {
  std::transform(matrix.begin(), matrix.end(), pageMatrix_.begin(),
                 [](double number) { return static_cast<float>(number); });
  engine_ = postscript::openConverter(pageMatrix_.data());
  engine_->interpreter->observer = &watch_;
  watch_.setPiece(*engine_, 0);
}

void Converter::startPage() {
  engine_->startPage(pageMatrix_.data());
  engine_->contentText.clear();
}

bool Converter::run(std::string_view piece, size_t start) {
  watch_.setPiece(*engine_, start);
  return engine_->convertOn(piece);
}

std::string Converter::takeContent(std::string room) {
  room.assign(engine_->contentText.text());
  engine_->contentText.clear();
  return room;
}

// What is open swallows a piece that would write something, or swallows only its beginning, and
// then the rest makes no sense but a second piece is run as it should. When neither is run,
// something else is wrong, such as an empty dictionary stack.
bool Converter::isUnfinished() {
  engine_->interpreter->observer = nullptr;
  engine_->contentText.clear();
  const bool isRun = engine_->convertOn(probe);
  const bool unfinished = isRun ? engine_->contentText.text() != probeText : writesForProbe();
  engine_->contentText.clear();
  engine_->interpreter->observer = &watch_;
  return unfinished;
}

bool Converter::writesForProbe() {
  engine_->contentText.clear();
  return engine_->convertOn(probe) && engine_->contentText.text() == probeText;
}

ObjectRecords::ObjectRecords() {
  uint64_t count = 0;
  PdfObject* const* const records = postscript::processState().pdfObjects.handOut(held_, &count);
  list_.assign(records, records + count);
}

void clearPdfObjects() {
  postscript::processState().pdfObjects.clearPdfObjects();
}

}  // namespace quillpress
