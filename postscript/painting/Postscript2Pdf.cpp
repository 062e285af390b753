#include "postscript/painting/Postscript2Pdf.h"

#include <cstring>
#include <exception>
#include <limits>
#include <utility>

#include "postscript/engine/Interpreter.h"
#include "postscript/values/Ex.h"
#include "support/DebugOutput.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "Postscript2Pdf";

Matrix widened(const float* matrix) {
  return {matrix[0], matrix[1], matrix[2], matrix[3], matrix[4], matrix[5]};
}

}  // namespace

Postscript2Pdf::Postscript2Pdf(const float* matrix) : pageMatrix(widened(matrix)) {
  resetGraphicsStates();
  interpreter = std::make_unique<Interpreter>();
}

Postscript2Pdf::~Postscript2Pdf() = default;

void Postscript2Pdf::startPage(const float* matrix) {
  pendingMoveto = false;
  inPattern = false;
  pageMatrix = widened(matrix);
  resetGraphicsStates();
}

const char* Postscript2Pdf::convert(const char* bytes, int32_t* length) noexcept {
  cutContent(0);
  if (!convertOn({bytes, *length < 0 ? std::strlen(bytes) : static_cast<size_t>(*length)})) {
    return nullptr;
  }
  *length = static_cast<int32_t>(contentText.size());
  return contentText.c_str();
}

bool Postscript2Pdf::convertOn(std::string_view piece) noexcept {
  try {
    try {
      run(piece);
      return true;
    } catch (Ex& ex) {
      const std::string_view report = ex.report();
      errorText = "Exception:";
      errorText += report;
      quillpress::debugOutput(errorText.c_str());
      reportFailure(report.substr(0, report.find_last_not_of('\n') + 1));
    } catch (const std::exception& failure) {
      reportFailure(failure.what());
    }
  } catch (...) {
    // Anything else fails without a text.
  }
  return false;
}

std::string Postscript2Pdf::takeContent(std::string room) {
  contentText.swap(room);
  cutContent(0);
  return room;
}

void Postscript2Pdf::reportFailure(std::string_view words) const {
  if (interpreter->observer) {
    interpreter->observer->failed(interpreter->parser.position(), words);
  }
}

void Postscript2Pdf::run(std::string_view piece) {
  interpreter->run(piece.data(), piece.size());
  if (contentText.size() > std::numeric_limits<int32_t>::max()) {
    throw Ex(sourceFile, 310, "content text is too long");
  }
}

void Postscript2Pdf::pushDefaultGraphicsState() {
  graphicsStates.push_back(std::make_unique<GraphicsState>());
  topState().matrix = pageMatrix;
}

void Postscript2Pdf::pushGraphicsState() {
  graphicsStates.push_back(std::make_unique<GraphicsState>(topState()));
}

void Postscript2Pdf::popGraphicsState() {
  if (graphicsStates.empty()) {
    throw Ex(sourceFile, 352, "No graphics states to pop");
  }
  // The fresh state comes before the last one goes, so that there is one when memory runs out.
  if (graphicsStates.size() == 1) {
    pushDefaultGraphicsState();
    std::swap(graphicsStates.front(), graphicsStates.back());
  }
  graphicsStates.pop_back();
}

void Postscript2Pdf::resetGraphicsStates() {
  if (graphicsStates.empty()) {
    return pushDefaultGraphicsState();
  }
  while (graphicsStates.size() > 1) {
    popGraphicsState();
  }
  popGraphicsState();
}

void Postscript2Pdf::writePoint(char letter) {
  GraphicsState& state = topState();
  write(state.currentX, " ", state.currentY, " ", std::string_view(&letter, 1), "\n");
  if (letter == 'm') {
    state.pathOpen = true;
  }
}

void Postscript2Pdf::writeCurve(double x1, double y1, double x2, double y2, double x3, double y3) {
  write(x1, " ", y1, " ", x2, " ", y2, " ", x3, " ", y3, " c\n");
}

void Postscript2Pdf::cutContent(size_t length) {
  contentText.resize(length);
  clipWriter.textWasCut();
}

void Postscript2Pdf::flushMoveto() {
  if (!pendingMoveto) {
    return;
  }
  writePoint('m');
  pendingMoveto = false;
}

}  // namespace postscript
