#include "tools/quillpress/Job.h"

#include <utility>

namespace quillpress {
namespace {

constexpr const char* unfinished =
    "its end is missing: a string, a procedure or data is still open";

}  // namespace

Job::Job(const DscDocument& source, const Matrix& matrix, Report tell)
    : document(source), pageMatrix(matrix), report(std::move(tell)) {
  open();
}

std::vector<ConvertedPage> Job::convertPages() {
  std::vector<ConvertedPage> converted;
  size_t number = 0;
  for (const DscPage& page : document.pages()) {
    ++number;
    if (auto content = convertPage(number, page)) {
      converted.push_back({number, std::move(*content), page.box});
    }
  }
  return converted;
}

// What the prolog paints has no page and is dropped.
void Job::open() {
  converter.emplace(pageMatrix);
  if (document.prolog().empty()) {
    return;
  }
  try {
    converter->run(document.prolog());
    if (converter->isUnfinished()) {
      throw ConversionFailure(unfinished);
    }
  } catch (const ConversionFailure& failure) {
    if (!std::exchange(prologReported, true)) {
      report("prolog", failure.what());
    }
  }
}

// A page that fails leaves the rest of what it was about to do in its converter, where the next
// page would run it first. As the structuring comments promise that a page needs the prolog only,
// the next one gets a converter of its own.
std::optional<std::string> Job::convertPage(size_t number, const DscPage& page) {
  const std::string where = "page " + std::to_string(number);
  std::optional<std::string> content;
  try {
    converter->startPage();
    content = converter->run(page.program);
    if (!converter->isUnfinished()) {
      return content;
    }
    report(where, unfinished);
  } catch (const ConversionFailure& failure) {
    report(where, failure.what());
  }
  open();
  return content;
}

}  // namespace quillpress
