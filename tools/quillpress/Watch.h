// Watch: the observer of one run after the other. It counts what is lost, knows where pages were
// shown, explains failures, and stops what takes too long or too much memory.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "postscript/engine/Observer.h"
#include "tools/quillpress/Report.h"
#include "tools/quillpress/SourceText.h"

namespace postscript {
class Postscript2Pdf;
}

namespace quillpress {

struct Limits {
  double seconds = 30;             // of processor time for a page; 0 for none
  size_t bytes = size_t{1} << 30;  // of memory; 0 for none
};

// Why a run was stopped.
enum class StopCause { none, time, memory };

// A page that showpage ended: how long the text was, and what was seen since the page before.
struct ShownPage {
  size_t textLength;
  Events events;
};

class Watch : public postscript::Observer {
 public:
  // onTurn: called now and then with how much of the text has been run; may be empty.
  Watch(std::string_view text, const Limits& limits, std::function<void(size_t)> onTurn = {})
      : source_(text), limits_(limits), onTurn_(std::move(onTurn)) {}

  // Forgets what it saw and sets the clock to nought.
  void begin();
  // What runs next begins there in the text.
  void setPiece(const postscript::Postscript2Pdf& converter, size_t start) {
    converter_ = &converter;
    pieceStart_ = start;
  }
  // Adds a failure after which so much of the text had been read.
  void addFailure(Failure failure, size_t end);
  bool isOutOfTime() const;

  // What was seen since begin() or the last page that was shown, the kinds of failure in their
  // order and at most ten.
  Events takeEvents();
  std::vector<ShownPage> takeShown() { return std::exchange(shown_, {}); }
  size_t failureCount() const { return failureCount_; }
  StopCause stopCause() const { return stopCause_; }
  // How much of the piece had been read when the last run failed.
  size_t failedAt() const { return failedAt_; }

  void ignored(postscript::OperatorRow row) override;
  void imageDiffers(postscript::ImageDifference difference) override;
  void pageShown(size_t textLength) override;
  void failed(size_t position, std::string_view words) override;
  bool wantsStop() override;

 private:
  size_t offset() const;
  void place(Failure& failure, size_t end);

  SourceText source_;
  Limits limits_;
  std::function<void(size_t)> onTurn_;
  const postscript::Postscript2Pdf* converter_ = nullptr;
  size_t pieceStart_ = 0;
  double started_ = 0;
  size_t questions_ = 0;
  std::map<postscript::OperatorRow, Loss> losses_;  // with offsets for lines
  std::vector<Failure> failures_;
  size_t aftermath_ = 0;
  size_t failureCount_ = 0;
  size_t failedAt_ = 0;
  std::array<size_t, imageDifferences> differences_{};
  std::vector<ShownPage> shown_;
  StopCause stopCause_ = StopCause::none;
};

}  // namespace quillpress
