#include "tools/quillpress/Summary.h"

#include <algorithm>
#include <map>
#include <vector>

#include "postscript/generated/OperatorRows.h"

namespace quillpress {
namespace {

using postscript::LossClass;

std::string plural(std::string_view noun) {
  for (const std::string_view phrase : {"string of text", "copy of the page"}) {
    if (noun == phrase) {
      const size_t blank = noun.find(' ');
      return plural(noun.substr(0, blank)) + std::string(noun.substr(blank));
    }
  }
  if (noun.ends_with('y')) {
    return std::string(noun.substr(0, noun.size() - 1)) + "ies";
  }
  return std::string(noun) + (noun.ends_with('x') ? "es" : "s");
}

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) {
    text += (text.empty() ? "" : ", ") + part;
  }
  return text;
}

// "2, 5-9".
std::string numbers(const std::vector<size_t>& pages) {
  std::vector<std::string> parts;
  for (size_t i = 0; i < pages.size();) {
    size_t last = i;
    while (last + 1 < pages.size() && pages[last + 1] == pages[last] + 1) {
      ++last;
    }
    parts.push_back(std::to_string(pages[i]) + (last > i ? "-" + std::to_string(pages[last]) : ""));
    i = last + 1;
  }
  return joined(parts);
}

std::string pageList(const char* words, const std::vector<size_t>& pages) {
  return std::string(words) + (pages.size() == 1 ? " page " : " pages ") + numbers(pages) + ".";
}

// The report's figures over all pages.
struct Totals {
  explicit Totals(const InputReport& report);

  size_t made = 0;
  Marks marks;
  std::map<postscript::OperatorRow, size_t> losses;
  std::array<size_t, imageDifferences> differences{};
  std::vector<size_t> blank;
  std::vector<size_t> failed;
  std::vector<size_t> byLine;
  std::vector<std::string> invalid;
};

Totals::Totals(const InputReport& report) {
  for (const PageReport& page : report.pages) {
    const Marks& own = page.marks;
    marks.paths += own.paths;
    marks.images += own.images;
    marks.masks += own.masks;
    marks.outside += own.outside;
    marks.lostPaths += own.lostPaths;
    for (const Loss& loss : page.events.losses) {
      losses[loss.row] += loss.count;
    }
    for (size_t i = 0; i < imageDifferences; ++i) {
      differences[i] += page.events.differences[i];
    }
    invalid.insert(invalid.end(), page.invalid.begin(), page.invalid.end());
    if (page.status == PageStatus::failed) {
      failed.push_back(page.number);
      continue;
    }
    ++made;
    if (page.status == PageStatus::blank) {
      blank.push_back(page.number);
    }
    if (page.byLine) {
      byLine.push_back(page.number);
    }
  }
}

std::string marksText(const Marks& marks) {
  std::vector<std::string> parts;
  for (const auto& [count, noun] : {std::pair<size_t, const char*>{marks.paths, "path"},
                                    {marks.images, "image"},
                                    {marks.masks, "mask"}}) {
    if (count > 0) {
      parts.push_back(counted(count, noun));
    }
  }
  return parts.empty() ? "nothing painted" : joined(parts);
}

// What was lost of a class, each operator's under its noun.
std::string lossText(const Totals& totals, std::initializer_list<LossClass> classes) {
  std::vector<std::string> parts;
  size_t strings = 0;
  for (const auto& [row, count] : totals.losses) {
    const auto [lossClass, noun] = postscript::operatorLoss(row);
    if (std::find(classes.begin(), classes.end(), lossClass) == classes.end()) {
      continue;
    }
    const std::string name(postscript::operatorName(row));
    if (lossClass == LossClass::text) {
      strings += count;
    } else if (noun.empty()) {
      parts.push_back(counted(count, "use") + " of " + name);
    } else {
      parts.push_back(counted(count, noun) + " (" + name + ")");
    }
  }
  if (strings > 0) {
    parts.insert(parts.begin(), counted(strings, "string of text"));
  }
  return joined(parts);
}

std::string differenceText(const Totals& totals) {
  constexpr const char* words[imageDifferences] = {
      "with the colours in another order (several data sources)",
      "not where the image's own matrix places them", "without their Decode array",
      "read with as many components as the current colour has"};
  std::vector<std::string> parts;
  for (size_t i = 0; i < imageDifferences; ++i) {
    if (totals.differences[i] > 0) {
      parts.push_back(counted(totals.differences[i], "image") + " " + words[i]);
    }
  }
  return joined(parts);
}

std::string shortNumber(double number) {
  return std::to_string(static_cast<long long>(number + 0.5));
}

// What can be seen of where the paint lies.
std::vector<std::string> placeTexts(const InputReport& report, const Totals& totals) {
  std::vector<std::string> texts;
  if (totals.marks.outside > 0) {
    texts.push_back(std::to_string(totals.marks.outside) + " of these " +
                    (totals.marks.outside == 1 ? "lies" : "lie") + " outside of the page.");
  }
  if (totals.marks.lostPaths > 0) {
    texts.push_back("Missing: " + counted(totals.marks.lostPaths, "outline") +
                    " (gsave fill grestore stroke leaves no path for the stroke).");
  }
  for (const PageReport& page : report.pages) {
    const auto& extent = page.marks.extent;
    if (page.boxIsAssumed && extent &&
        (extent->right > page.box.right + 1 || extent->top > page.box.top + 1)) {
      texts.push_back("Page " + std::to_string(page.number) + " is cut: it is painted up to " +
                      shortNumber(extent->right) + "x" + shortNumber(extent->top) +
                      " points, and the file names no size; give --page-size.");
      break;
    }
  }
  return texts;
}

std::vector<std::string> sentences(const InputReport& report, const Totals& totals) {
  std::vector<std::string> texts;
  const auto add = [&](const char* words, const std::string& list) {
    if (!list.empty()) {
      texts.push_back(words + list + ".");
    }
  };
  add("Not painted: ", lossText(totals, {LossClass::text, LossClass::painting}));
  add("Not computed, so that sizes may differ: ", lossText(totals, {LossClass::value}));
  add("Different: ", differenceText(totals));
  for (std::string& text : placeTexts(report, totals)) {
    texts.push_back(std::move(text));
  }
  add("No valid PDF, and left out: ", joined(totals.invalid));
  if (report.prologMarks.total() > 0) {
    texts.push_back("Painted before the first page, and dropped: " + marksText(report.prologMarks) +
                    ".");
  }
  if (!totals.blank.empty()) {
    texts.push_back(pageList("Blank:", totals.blank));
  }
  if (!totals.failed.empty()) {
    texts.push_back(pageList("Left out:", totals.failed));
  }
  if (!totals.byLine.empty()) {
    texts.push_back(pageList("Converted line by line, over failures:", totals.byLine));
  }
  add("Not followed: ", lossText(totals, {LossClass::setup}));
  return texts;
}

void writeFailure(std::ostream& out, const InputReport& report, const std::string& where,
                  const Failure& failure) {
  out << "quillpress: " << report.input << ": " << where;
  if (failure.line > 0) {
    out << ", line " << failure.line;
  }
  out << ": " << failure.words;
  if (!failure.advice.empty()) {
    out << "; " << failure.advice;
  }
  if (failure.count > 1) {
    out << " (" << failure.count << " times)";
  }
  if (!failure.source.empty()) {
    out << ": " << failure.source;
  }
  if (!failure.engine.empty()) {
    out << " " << (failure.engine.starts_with('[') ? "" : "[") << failure.engine
        << (failure.engine.starts_with('[') ? "" : "]");
  }
  out << '\n';
}

// A kind that many pages have is told for the first of them.
class FailureWriter {
 public:
  FailureWriter(std::ostream& out, const InputReport& report) : out_(out), report_(report) {}

  void write(const std::string& where, const Events& events) {
    size_t repeated = 0;
    for (const Failure& failure : events.failures) {
      if (std::find(told_.begin(), told_.end(), failure.words) != told_.end()) {
        ++repeated;
        continue;
      }
      told_.push_back(failure.words);
      writeFailure(out_, report_, where, failure);
    }
    const bool isNew = repeated < events.failures.size();
    if (events.moreKinds > 0 && isNew) {
      out_ << "quillpress: " << report_.input << ": " << where << ": and "
           << counted(events.moreKinds, "more kind") << " of failure\n";
    }
    if (events.aftermath > 0 && isNew) {
      out_ << "quillpress: " << report_.input << ": " << where << ": and "
           << counted(events.aftermath, "failure") << " that may come of "
           << (events.failures.size() == 1 ? "this" : "these") << '\n';
    }
  }

 private:
  std::ostream& out_;
  const InputReport& report_;
  std::vector<std::string> told_;
};

void writeFailures(std::ostream& out, const InputReport& report) {
  FailureWriter writer(out, report);
  writer.write("prolog", report.prolog);
  for (const PageReport& page : report.pages) {
    writer.write("page " + std::to_string(page.number), page.events);
  }
}

}  // namespace

std::string counted(size_t count, std::string_view noun) {
  return std::to_string(count) + " " + (count == 1 ? std::string(noun) : plural(noun));
}

void writeSummary(std::ostream& out, const InputReport& report, bool quiet) {
  writeFailures(out, report);
  if (!report.failure.empty()) {
    out << "quillpress: " << report.failure << '\n';
    return;
  }
  if (quiet && exitStatusOf(report) == exitWhole) {
    return;
  }
  const Totals totals(report);
  out << (report.output == "-" ? "standard output" : report.output) << ": "
      << counted(totals.made, "page") << "; " << marksText(totals.marks) << ".";
  for (const std::string& text : sentences(report, totals)) {
    out << ' ' << text;
  }
  out << '\n';
}

void writeVerdict(std::ostream& out, const InputReport& report) {
  out << report.input << ": ";
  switch (exitStatusOf(report)) {
    case exitWhole:
      out << "will come out whole: ";
      break;
    case exitIncomplete:
      out << "will not come out whole: ";
      break;
    default:
      out << "nothing can be made of it";
      out << (report.failure.empty() ? ".\n" : ": " + report.failure + "\n");
      return;
  }
  const Totals totals(report);
  out << counted(totals.made, "page") << "; " << marksText(totals.marks) << ".";
  for (const std::string& text : sentences(report, totals)) {
    out << ' ' << text;
  }
  out << '\n';
}

}  // namespace quillpress
