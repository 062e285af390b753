// Job: the pages of a document, each converted on its own. A page that fails is converted again,
// line by line over each failure, with a fresh converter and the prolog; what painted more counts.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/quillpress/Converter.h"
#include "tools/quillpress/DscDocument.h"
#include "tools/quillpress/Geometry.h"
#include "tools/quillpress/Report.h"
#include "tools/quillpress/Watch.h"

namespace quillpress {

// A page on its way from the converter to the file.
struct Page {
  std::string content;
  PageReport report;
};

struct JobOptions {
  Matrix pageMatrix = identity;
  std::optional<Box> pageSize;  // in place of what the document says
  Limits limits;
  // Called now and then with how much of the text has been run.
  std::function<void(size_t offset)> onTurn;
};

class Job {
 public:
  Job(const DscDocument& document, const JobOptions& options);

  // Takes a page, and may give back the memory of one that is done.
  using TakePage = std::function<std::string(Page page)>;

  // Hands over the pages in their order, those that failed too. Throws std::runtime_error when the
  // prolog comes to no end within the limits.
  void convert(const TakePage& takePage);

  // What was seen of the part before the first page, and what it painted for nobody.
  const Events& prologEvents() const { return prologEvents_; }
  const Marks& prologMarks() const { return prologMarks_; }

 private:
  // What a run of a page came to.
  struct Attempt {
    std::string content;
    std::vector<ShownPage> shown;
    Events rest;  // seen after the last showpage
    size_t failures = 0;
    bool stopped = false;
    bool byLine = false;
  };

  void open();
  bool runProlog(bool byLine);
  bool runAll(std::string_view program, bool byLine);
  void runByLine(std::string_view program);
  bool runPiece(std::string_view piece, size_t start);
  Attempt attempt(const DscPage& page, bool byLine);
  Attempt convertPage(const DscPage& page);
  void handOver(const DscPage& page, Attempt attempt, double seconds, const TakePage& takePage);
  PageReport reportFor(const DscPage& page, const Attempt& attempt);
  size_t placeOf(std::string_view piece) const {
    return static_cast<size_t>(piece.data() - document_.text().data());
  }

  const DscDocument& document_;
  JobOptions options_;
  Watch watch_;
  std::optional<Converter> converter_;  // none when the next page needs a fresh one
  bool prologByLine_ = false;
  bool prologIsKnown_ = false;
  Events prologEvents_;
  Marks prologMarks_;
  size_t pageCount_ = 0;
  std::string room_;
};

// A document's own size, or Letter.
constexpr Box assumedBox = letter;

}  // namespace quillpress
