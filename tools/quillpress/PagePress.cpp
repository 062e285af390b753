#include "tools/quillpress/PagePress.h"

#include <utility>

namespace quillpress {

PagePress::PagePress(PageStore& store, const Matrix& pageMatrix)
    : store_(store),
      pageMatrix_(pageMatrix),
      step_(pageMatrix == identity ? "" : matrixText(pageMatrix) + "cm\n"),
      thread_([this] { work(); }) {}

PagePress::~PagePress() {
  stop();
}

void PagePress::stop() {
  {
    const std::lock_guard lock(mutex_);
    noMore_ = true;
  }
  changed_.notify_all();
  if (thread_.joinable()) {
    thread_.join();
  }
}

std::string PagePress::put(Page page) {
  constexpr size_t mostWaiting = 2;
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return waiting_.size() < mostWaiting || failure_; });
  if (failure_) {
    std::rethrow_exception(failure_);
  }
  waiting_.push_back(std::move(page));
  std::string room;
  if (!spare_.empty()) {
    room = std::move(spare_.back());
    spare_.pop_back();
  }
  lock.unlock();
  changed_.notify_all();
  return room;
}

std::vector<PressedPage> PagePress::finish() {
  stop();
  if (failure_) {
    std::rethrow_exception(failure_);
  }
  return std::move(pressed_);
}

void PagePress::work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return !waiting_.empty() || noMore_; });
    if (waiting_.empty()) {
      return;
    }
    Page page = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    changed_.notify_all();
    try {
      press(page);
    } catch (...) {
      lock.lock();
      failure_ = std::current_exception();
      waiting_.clear();
      changed_.notify_all();
      return;
    }
    lock.lock();
    spare_.push_back(std::move(page.content));
  }
}

void PagePress::press(Page& page) {
  PressedPage result;
  result.report = std::move(page.report);
  if (result.report.status != PageStatus::failed) {
    ContentScan scan = scanContent(page.content, result.report.box, pageMatrix_);
    balance(page.content, scan);
    if (!step_.empty()) {
      page.content.insert(0, step_);
    }
    const std::string_view stream = deflater_.compress(page.content);
    result.content = store_.put(stream);
    result.names = std::move(scan.names);
    result.report.marks = scan.marks;
    result.report.contentBytes = page.content.size();
  }
  pressed_.push_back(std::move(result));
}

}  // namespace quillpress
