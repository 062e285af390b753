#include "tools/quillpress/Job.h"

#include <stdexcept>
#include <utility>

#include "tools/quillpress/SourceText.h"
#include "tools/quillpress/system/System.h"

namespace quillpress {
namespace {

constexpr std::string_view whiteSpace("\0\t\n\f\r ", 6);

Failure unfinishedFailure() {
  Failure failure;
  failure.cause = "data-ends-early";
  failure.words = "its end is missing: a string, a procedure or data is still open";
  failure.advice = "see whether the file was cut off";
  return failure;
}

bool doesNothing(std::string_view piece) {
  const size_t first = piece.find_first_not_of(whiteSpace);
  return first == std::string_view::npos || piece[first] == '%';
}

size_t marksIn(std::string_view content) {
  return scanContent(content, assumedBox).marks.total();
}

void append(Events& events, Events more) {
  for (Loss& loss : more.losses) {
    Loss* own = nullptr;
    for (Loss& one : events.losses) {
      own = one.row == loss.row ? &one : own;
    }
    if (own != nullptr) {
      own->count += loss.count;
    } else {
      events.losses.push_back(loss);
    }
  }
  for (Failure& failure : more.failures) {
    events.failures.push_back(std::move(failure));
  }
  events.moreKinds += more.moreKinds;
  events.aftermath += more.aftermath;
  for (size_t i = 0; i < imageDifferences; ++i) {
    events.differences[i] += more.differences[i];
  }
}

}  // namespace

Job::Job(const DscDocument& document, const JobOptions& options)
    : document_(document),
      options_(options),
      watch_(document.text(), options.limits, options.onTurn) {}

void Job::convert(const TakePage& takePage) {
  for (const DscPage& page : document_.pages()) {
    const double begun = threadSeconds();
    Attempt made = convertPage(page);
    handOver(page, std::move(made), threadSeconds() - begun, takePage);
  }
}

// A fresh converter that has run the prolog. What that paints has no page and is dropped.
void Job::open() {
  if (!prologByLine_ && !runProlog(false)) {
    prologByLine_ = true;
  }
  if (prologByLine_) {
    runProlog(true);
  }
  const Events events = watch_.takeEvents();
  if (watch_.stopCause() != StopCause::none) {
    throw std::runtime_error("what comes before the first page does not end: " +
                             events.failures.front().words + "; " + events.failures.front().advice);
  }
  if (!std::exchange(prologIsKnown_, true)) {
    prologEvents_ = events;
    prologMarks_ = scanContent(converter_->content(), assumedBox).marks;
  }
}

bool Job::runProlog(bool byLine) {
  watch_.begin();
  converter_.emplace(options_.pageMatrix, watch_);
  const std::string_view prolog = document_.prolog();
  if (prolog.empty()) {
    return true;
  }
  if (!runAll(prolog, byLine)) {
    return watch_.stopCause() != StopCause::none;
  }
  return true;
}

// The piece after the last one ends a token that nothing follows.
bool Job::runAll(std::string_view program, bool byLine) {
  if (byLine) {
    runByLine(program);
  } else if (!converter_->run(program, placeOf(program))) {
    return false;
  }
  const bool isOpen = !program.empty() && whiteSpace.find(program.back()) == std::string_view::npos;
  if (isOpen && watch_.stopCause() == StopCause::none) {
    converter_->run("\n", placeOf(program) + program.size());
  }
  return watch_.failureCount() == 0;
}

// After a failure the engine still has the rest of what it was about to do; the next piece goes on
// with that. So a procedure is carried through over its failures too.
void Job::runByLine(std::string_view program) {
  constexpr size_t giveUpAfter = 100;
  size_t failuresInARow = 0;
  for (size_t begin = 0; begin < program.size() && failuresInARow < giveUpAfter;) {
    if (watch_.wantsStop()) {
      watch_.failed(0, "");
      return;
    }
    const size_t end = endOfPiece(program, begin);
    const std::string_view piece = program.substr(begin, end - begin);
    if (!runPiece(piece, placeOf(piece))) {
      ++failuresInARow;
    } else if (!doesNothing(piece)) {
      failuresInARow = 0;
    }
    if (watch_.stopCause() != StopCause::none) {
      return;
    }
    begin = end;
  }
}

// What an earlier piece left may fail before anything of this one is read; then it is run again.
bool Job::runPiece(std::string_view piece, size_t start) {
  constexpr int tries = 20;
  for (int i = 0; i < tries; ++i) {
    if (converter_->run(piece, start)) {
      return true;
    }
    if (watch_.failedAt() > 0 || watch_.stopCause() != StopCause::none) {
      return false;
    }
  }
  return false;
}

Job::Attempt Job::attempt(const DscPage& page, bool byLine) {
  watch_.begin();
  converter_->startPage();
  Attempt result;
  result.byLine = byLine;
  runAll(page.program, byLine);
  result.stopped = watch_.stopCause() != StopCause::none;
  const bool wholeRunFailed = !byLine && watch_.failureCount() > 0;
  result.content = converter_->takeContent(std::exchange(room_, {}));
  result.shown = watch_.takeShown();
  if (!result.stopped && !wholeRunFailed && converter_->isUnfinished()) {
    watch_.addFailure(unfinishedFailure(), placeOf(page.program) + page.program.size());
  }
  result.rest = watch_.takeEvents();
  result.failures = watch_.failureCount();
  return result;
}

// A page that fails leaves the rest of what it was about to do in its converter, where the next
// page would run it first. As the structuring comments promise that a page needs the prolog only,
// the next one gets a converter of its own.
Job::Attempt Job::convertPage(const DscPage& page) {
  if (!converter_) {
    open();
  }
  Attempt whole = attempt(page, false);
  if (whole.failures == 0) {
    return whole;
  }
  converter_.reset();
  const bool onlyUnfinished =
      whole.rest.failures.size() == 1 && whole.rest.failures[0].cause == "data-ends-early";
  if (whole.stopped || onlyUnfinished) {
    return whole;
  }
  open();
  Attempt lines = attempt(page, true);
  converter_.reset();
  const bool takeLines =
      !lines.stopped && (lines.failures == 0 || marksIn(lines.content) >= marksIn(whole.content));
  return takeLines ? lines : whole;
}

PageReport Job::reportFor(const DscPage& page, const Attempt& attempt) {
  PageReport report;
  report.number = ++pageCount_;
  report.label = page.label;
  report.boxIsAssumed = !options_.pageSize && !page.box;
  report.box = options_.pageSize.value_or(page.box.value_or(assumedBox));
  report.rotation = page.rotation;
  report.byLine = attempt.byLine;
  return report;
}

// A run may have shown several pages. What it wrote after the last one belongs to that one, unless
// it paints something.
void Job::handOver(const DscPage& page, Attempt attempt, double seconds, const TakePage& takePage) {
  size_t begin = 0;
  auto& shown = attempt.shown;
  const std::string& content = attempt.content;
  if (!shown.empty() && marksIn(std::string_view(content).substr(
                            std::min(shown.back().textLength, content.size()))) == 0) {
    shown.back().textLength = content.size();
    append(shown.back().events, std::move(attempt.rest));
  } else {
    shown.push_back({content.size(), std::move(attempt.rest)});
  }
  const bool single = shown.size() == 1;
  for (ShownPage& part : shown) {
    Page made;
    made.report = reportFor(page, attempt);
    made.report.milliseconds = seconds * 1000 / static_cast<double>(shown.size());
    made.report.events = std::move(part.events);
    const size_t end = std::min(std::max(part.textLength, begin), content.size());
    made.content = single ? std::move(attempt.content) : content.substr(begin, end - begin);
    begin = end;
    const bool isLeftOut =
        attempt.stopped || (!made.report.events.failures.empty() && marksIn(made.content) == 0);
    if (isLeftOut) {
      made.report.status = PageStatus::failed;
      made.content.clear();
    }
    room_ = takePage(std::move(made));
  }
}

}  // namespace quillpress
