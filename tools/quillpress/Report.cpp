#include "tools/quillpress/Report.h"

#include <algorithm>
#include <numeric>

#include "postscript/generated/OperatorRows.h"

namespace quillpress {
namespace {

using postscript::LossClass;

bool isLossOf(const Loss& loss, std::initializer_list<LossClass> classes) {
  const LossClass own = postscript::operatorLoss(loss.row).lossClass;
  return std::find(classes.begin(), classes.end(), own) != classes.end();
}

bool pageIsWhole(const PageReport& page) {
  const size_t different =
      std::accumulate(page.events.differences.begin(), page.events.differences.end(), size_t{0});
  const bool isCut =
      page.boxIsAssumed && page.marks.extent &&
      (page.marks.extent->right > page.box.right + 1 || page.marks.extent->top > page.box.top + 1);
  return !hasLoss(page.events) && different == 0 && page.invalid.empty() && !isCut &&
         page.marks.outside == 0 && page.marks.lostPaths == 0;
}

}  // namespace

bool hasLoss(const Events& events) {
  const auto isLoss = [](const Loss& loss) {
    return isLossOf(loss, {LossClass::text, LossClass::painting, LossClass::value});
  };
  return !events.failures.empty() ||
         std::any_of(events.losses.begin(), events.losses.end(), isLoss);
}

PageStatus statusOf(const PageReport& page) {
  if (page.status == PageStatus::failed) {
    return PageStatus::failed;
  }
  if (page.marks.total() == 0) {
    return PageStatus::blank;
  }
  return pageIsWhole(page) ? PageStatus::whole : PageStatus::partial;
}

int exitStatusOf(const InputReport& report) {
  const auto isMade = [](const PageReport& page) { return page.status != PageStatus::failed; };
  if (!report.failure.empty() || std::none_of(report.pages.begin(), report.pages.end(), isMade)) {
    return exitNothingMade;
  }
  const auto isWhole = [](const PageReport& page) { return page.status == PageStatus::whole; };
  const bool whole = std::all_of(report.pages.begin(), report.pages.end(), isWhole) &&
                     report.prologMarks.total() == 0 && report.prolog.failures.empty();
  return whole ? exitWhole : exitIncomplete;
}

}  // namespace quillpress
