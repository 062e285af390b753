// PagePress: makes streams of pages, in a thread of its own while the next page is converted. It
// scans a page's text, balances it, compresses it and puts it away.
#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tools/quillpress/Deflate.h"
#include "tools/quillpress/Job.h"
#include "tools/quillpress/PageStore.h"

namespace quillpress {

// A page that is ready for the file. One that failed has no stream.
struct PressedPage {
  StoredStream content;
  std::set<std::string> names;  // of the objects that it uses
  PageReport report;
};

class PagePress {
 public:
  PagePress(PageStore& store, const Matrix& pageMatrix);
  PagePress(const PagePress&) = delete;
  PagePress& operator=(const PagePress&) = delete;
  ~PagePress();

  // Gives back the memory of a page that is done. Waits when too many pages do. Throws what went
  // wrong with an earlier page.
  std::string put(Page page);

  // All pages, in their order. Throws what went wrong with one.
  std::vector<PressedPage> finish();

 private:
  void work();
  void press(Page& page);
  void stop();

  PageStore& store_;
  Matrix pageMatrix_;
  std::string step_;  // what the page matrix is as text before each page's
  Deflater deflater_;
  std::vector<PressedPage> pressed_;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Page> waiting_;
  std::vector<std::string> spare_;
  bool noMore_ = false;
  std::exception_ptr failure_;
  std::thread thread_;
};

}  // namespace quillpress
