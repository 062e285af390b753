#include "tools/quillpress/DscComments.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace quillpress {
namespace {

constexpr std::string_view blanks = " \t";
constexpr std::string_view lineEnds = "\r\n";

std::string_view trim(std::string_view text) {
  const size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// The comment of a line that begins with "%%". A keyword goes up to its colon or, without one, to a
// blank.
DscComment commentOf(std::string_view line, size_t offset) {
  line.remove_prefix(2);
  size_t end = line.find_first_of(": \t");
  if (end == std::string_view::npos) {
    end = line.size();
  } else if (line[end] == ':') {
    ++end;
  }
  return {offset, line.substr(0, end), trim(line.substr(end))};
}

bool closesData(std::string_view line) {
  return line.starts_with("%%EndData") || line.starts_with("%%EndBinary");
}

}  // namespace

std::optional<DscComment> DscComments::next() {
  while (findComment()) {
    const size_t offset = position_;
    const DscComment comment = commentOf(takeLine(), offset);
    if (comment.keyword == "BeginDocument:") {
      ++documentDepth_;
    } else if (comment.keyword == "EndDocument") {
      documentDepth_ -= documentDepth_ > 0 ? 1 : 0;
    } else if (comment.keyword == "BeginData:" || comment.keyword == "BeginBinary:") {
      skipData(comment.value);
    } else if (documentDepth_ == 0) {
      return comment;
    }
  }
  return std::nullopt;
}

// Moves on to the next line that begins with "%%". Percent signs are rare, and the search for one
// is much faster than reading lines.
bool DscComments::findComment() {
  for (size_t place = position_;; ++place) {
    place = text_.find('%', place);
    if (place == std::string_view::npos) {
      return false;
    }
    const bool startsLine = place == 0 || lineEnds.find(text_[place - 1]) != std::string_view::npos;
    if (startsLine && text_.substr(place).starts_with("%%")) {
      position_ = place;
      return true;
    }
  }
}

// The next line, without its end, which is a line feed, a carriage return or both.
std::string_view DscComments::takeLine() {
  const size_t begin = position_;
  const size_t end = std::min(text_.find_first_of(lineEnds, begin), text_.size());
  position_ = std::min(end + (text_.substr(end, 2) == "\r\n" ? 2 : 1), text_.size());
  return text_.substr(begin, end - begin);
}

// Data may hold anything, lines that look like comments too, so that its extent ("1200 Binary
// Bytes") counts, as long as it leads to the closing line. Otherwise the closing line is sought;
// without one the comment is taken for a mistake.
void DscComments::skipData(std::string_view extent) {
  const size_t begin = position_;
  size_t count = 0;
  const auto [rest, error] = std::from_chars(extent.data(), extent.data() + extent.size(), count);
  if (error == std::errc()) {
    if (extent.ends_with("Lines")) {
      for (; count > 0 && position_ < text_.size(); --count) {
        takeLine();
      }
    } else {
      position_ += std::min(count, text_.size() - begin);
    }
    position_ = std::min(text_.find_first_not_of(lineEnds, position_), text_.size());
    if (closesData(text_.substr(position_))) {
      return;
    }
  }
  position_ = begin;
  while (moreClosings_ && position_ < text_.size()) {
    if (closesData(takeLine())) {
      return;
    }
  }
  moreClosings_ = false;
  position_ = begin;
}

}  // namespace quillpress
