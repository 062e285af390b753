// A call clears the text, runs the bytes and returns what the operators have written. Nothing is
// thrown past convert and convertOn: a failure becomes `errorText` (see succeeds).
#include "postscript/painting/Postscript2Pdf.h"

#include <cstring>
#include <exception>
#include <limits>

#include "postscript/engine/Interpreter.h"
#include "postscript/values/Ex.h"
#include "support/DebugOutput.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "Postscript2Pdf";

// Room for so many graphics states stays from page to page.
constexpr size_t usualStates = 256;

Matrix widened(const float* matrix) {
  return {matrix[0], matrix[1], matrix[2], matrix[3], matrix[4], matrix[5]};
}

}  // namespace

Postscript2Pdf::Postscript2Pdf(const float* matrix)
    : pageMatrix(widened(matrix)),
      interpreter(std::make_unique<Interpreter>()),
      contentText(&interpreter->memory.budget),
      objectShare(interpreter->memory.budget, *pdfObjects),
      statesShare_(&interpreter->memory.budget) {
  resetGraphicsStates();
}

// The states go first: the names of their fonts count in the interpreter's budget.
Postscript2Pdf::~Postscript2Pdf() {
  graphicsStates.clear();
}

void Postscript2Pdf::startPage(const float* matrix) {
  pendingMoveto = false;
  inPattern = false;
  pageMatrix = widened(matrix);
  resetGraphicsStates();
}

const char* Postscript2Pdf::convert(const char* bytes, int32_t* length) noexcept {
  contentText.clear();
  std::string_view text;
  const auto work = [&] {
    run({bytes, *length < 0 ? std::strlen(bytes) : static_cast<size_t>(*length)});
    // Clips are put in now, and there may be no memory for that.
    text = contentText.text();
  };
  if (!succeeds(work)) {
    return nullptr;
  }
  *length = static_cast<int32_t>(text.size());
  return text.data();
}

bool Postscript2Pdf::convertOn(std::string_view piece) noexcept {
  return succeeds([this, piece] { run(piece); });
}

template <class Work>
bool Postscript2Pdf::succeeds(const Work& work) noexcept {
  try {
    try {
      work();
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

void Postscript2Pdf::reportFailure(std::string_view words) const {
  if (interpreter->observer) {
    interpreter->observer->failed(interpreter->parser.position(), words);
  }
}

void Postscript2Pdf::run(std::string_view piece) {
  objectShare.refresh();
  interpreter->run(piece.data(), piece.size());
  if (contentText.size() > std::numeric_limits<int32_t>::max()) {
    throw Ex(sourceFile, 310, "content text is too long");
  }
}

void Postscript2Pdf::pushDefaultGraphicsState() {
  graphicsStates.emplace_back();
  topState().matrix = pageMatrix;
}

void Postscript2Pdf::pushGraphicsState() {
  if (graphicsStates.size() == graphicsStates.capacity()) {
    const size_t wanted = 2 * graphicsStates.size() + 8;
    statesShare_.resizeMoving(wanted * sizeof(GraphicsState));
    graphicsStates.reserve(wanted);
  }
  graphicsStates.push_back(graphicsStates.back());
}

void Postscript2Pdf::popGraphicsState() {
  if (graphicsStates.empty()) {
    throw Ex(sourceFile, 352, "No graphics states to pop");
  }
  graphicsStates.pop_back();
  if (graphicsStates.empty()) {
    pushDefaultGraphicsState();  // without fail: there is room for it
  }
}

// The pop of the last state puts a fresh one in its place, with the page's matrix.
void Postscript2Pdf::resetGraphicsStates() {
  if (graphicsStates.empty()) {
    return pushDefaultGraphicsState();
  }
  while (graphicsStates.size() > 1) {
    popGraphicsState();
  }
  popGraphicsState();
  if (graphicsStates.capacity() > usualStates) {
    graphicsStates.shrink_to_fit();
    statesShare_.resize(graphicsStates.capacity() * sizeof(GraphicsState));
  }
}

void Postscript2Pdf::writePoint(char letter) {
  GraphicsState& state = topState();
  const char end[] = {' ', letter, '\n', '\0'};
  write(state.currentX, " ", state.currentY, end);
  if (letter == 'm') {
    state.pathOpen = true;
  }
}

void Postscript2Pdf::writeCurve(double x1, double y1, double x2, double y2, double x3, double y3) {
  write(x1, " ", y1, " ", x2, " ", y2, " ", x3, " ", y3, " c\n");
}

void Postscript2Pdf::writeMatrix(const Matrix& matrix) {
  constexpr std::string_view word = "cm";
  contentText.endAt(formatMatrix(contentText.room(roomForMatrix(word)), matrix, word));
}

void Postscript2Pdf::flushMoveto() {
  if (!pendingMoveto) {
    return;
  }
  writePoint('m');
  pendingMoveto = false;
}

}  // namespace postscript
