#include "tools/quillpress/Watch.h"

#include <algorithm>
#include <utility>

#include "postscript/engine/Interpreter.h"
#include "postscript/painting/Postscript2Pdf.h"
#include "tools/quillpress/Advice.h"
#include "tools/quillpress/system/System.h"

namespace quillpress {
namespace {

std::string numberText(double number) {
  std::string text = std::to_string(number);
  text.erase(text.find_last_not_of('0') + 1);
  return text.ends_with('.') ? text.substr(0, text.size() - 1) : text;
}

Failure stopFailure(StopCause cause, const Limits& limits) {
  Failure failure;
  if (cause == StopCause::time) {
    failure.cause = "time-limit";
    failure.words = "it took more than " + numberText(limits.seconds) + " s of processor time";
    failure.advice = "give more with --time-limit SECONDS, or 0 for no limit";
  } else {
    failure.cause = "memory-limit";
    failure.words = "it took more than " + std::to_string(limits.bytes >> 20) + " MB of memory";
    failure.advice = "give more with --memory-limit MEGABYTES, or 0 for no limit";
  }
  return failure;
}

bool isSameKind(const Failure& one, const Failure& other) {
  return one.cause == other.cause && (one.cause != "unknown-name" || one.engine == other.engine) &&
         (one.cause != "other" || one.engine == other.engine);
}

}  // namespace

void Watch::begin() {
  losses_.clear();
  failures_.clear();
  shown_.clear();
  differences_ = {};
  aftermath_ = failureCount_ = failedAt_ = questions_ = 0;
  stopCause_ = StopCause::none;
  started_ = threadSeconds();
}

size_t Watch::offset() const {
  return pieceStart_ + converter_->interpreter->parser.position();
}

bool Watch::isOutOfTime() const {
  return limits_.seconds > 0 && threadSeconds() - started_ > limits_.seconds;
}

void Watch::ignored(postscript::OperatorRow row) {
  Loss& loss = losses_[row];
  if (++loss.count == 1) {
    loss.row = row;
    loss.line = offset();
  }
}

void Watch::imageDiffers(postscript::ImageDifference difference) {
  ++differences_[static_cast<size_t>(difference)];
}

void Watch::pageShown(size_t textLength) {
  shown_.push_back({textLength, takeEvents()});
}

bool Watch::wantsStop() {
  // The system's word for the memory in use is dearer than the time.
  constexpr size_t questionsPerLook = 64;
  if (onTurn_) {
    onTurn_(offset());
  }
  if (isOutOfTime()) {
    stopCause_ = StopCause::time;
  } else if (limits_.bytes > 0 &&
             (converter_->contentText.size() > limits_.bytes ||
              (++questions_ % questionsPerLook == 0 && memoryInUse() > limits_.bytes))) {
    stopCause_ = StopCause::memory;
  }
  return stopCause_ != StopCause::none;
}

void Watch::failed(size_t position, std::string_view words) {
  failedAt_ = position;
  const size_t end = pieceStart_ + position;
  if (limits_.bytes > 0 && words.find("bad_alloc") != std::string_view::npos) {
    stopCause_ = StopCause::memory;
  }
  if (stopCause_ != StopCause::none) {
    return addFailure(stopFailure(stopCause_, limits_), end);
  }
  addFailure(explain({words, source_.tokenBefore(end), source_.lineOf(end > 0 ? end - 1 : 0),
                      source_.text()}),
             end);
}

void Watch::addFailure(Failure failure, size_t end) {
  ++failureCount_;
  const auto same = std::find_if(failures_.begin(), failures_.end(),
                                 [&](const Failure& one) { return isSameKind(one, failure); });
  if (same != failures_.end()) {
    ++same->count;
  } else if (!failures_.empty() && mayFollow(failure, source_.text())) {
    ++aftermath_;
  } else {
    place(failure, end);
    failures_.push_back(std::move(failure));
  }
}

void Watch::place(Failure& failure, size_t end) {
  const std::string_view token = source_.tokenBefore(end);
  const size_t begin =
      token.empty() ? end : static_cast<size_t>(token.data() - source_.text().data());
  const SourcePlace place = source_.placeOf(begin);
  failure.line = place.line;
  failure.column = place.column;
  failure.token = printable(token);
  failure.source = printable(source_.lineOf(begin));
}

Events Watch::takeEvents() {
  constexpr size_t listedKinds = 10;
  Events events;
  for (auto& [row, loss] : losses_) {
    loss.line = source_.placeOf(loss.line).line;
    events.losses.push_back(loss);
  }
  std::stable_sort(events.losses.begin(), events.losses.end(),
                   [](const Loss& one, const Loss& other) { return one.line < other.line; });
  events.failures = std::exchange(failures_, {});
  if (events.failures.size() > listedKinds) {
    events.moreKinds = events.failures.size() - listedKinds;
    events.failures.resize(listedKinds);
  }
  events.aftermath = std::exchange(aftermath_, 0);
  events.differences = std::exchange(differences_, {});
  losses_.clear();
  return events;
}

}  // namespace quillpress
