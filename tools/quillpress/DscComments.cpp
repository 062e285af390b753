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

// The line's comment, if it is one; a keyword goes up to its colon or, without one, to a blank.
std::optional<DscComment> commentOf(std::string_view line, size_t offset) {
  if (!line.starts_with("%%")) {
    return std::nullopt;
  }
  line.remove_prefix(2);
  size_t end = line.find_first_of(": \t");
  if (end == std::string_view::npos) {
    end = line.size();
  } else if (line[end] == ':') {
    ++end;
  }
  return DscComment{offset, line.substr(0, end), trim(line.substr(end))};
}

bool closesData(std::string_view line) {
  return line.starts_with("%%EndData") || line.starts_with("%%EndBinary");
}

}  // namespace

std::optional<DscComment> DscComments::next() {
  while (position < text.size()) {
    const size_t offset = position;
    const auto comment = commentOf(takeLine(), offset);
    if (!comment) {
      continue;
    }
    if (comment->keyword == "BeginDocument:") {
      ++documentDepth;
    } else if (comment->keyword == "EndDocument") {
      documentDepth -= documentDepth > 0 ? 1 : 0;
    } else if (comment->keyword == "BeginData:" || comment->keyword == "BeginBinary:") {
      skipData(comment->value);
    } else if (documentDepth == 0) {
      return comment;
    }
  }
  return std::nullopt;
}

// The next line, without its end, which is a line feed, a carriage return or both.
std::string_view DscComments::takeLine() {
  const size_t begin = position;
  const size_t end = std::min(text.find_first_of(lineEnds, begin), text.size());
  position = std::min(end + (text.substr(end, 2) == "\r\n" ? 2 : 1), text.size());
  return text.substr(begin, end - begin);
}

// Data may hold anything, lines that look like comments too, so that its extent ("1200 Binary
// Bytes") counts, as long as it leads to the closing line. Otherwise the closing line is sought;
// without one the comment is taken for a mistake.
void DscComments::skipData(std::string_view extent) {
  const size_t begin = position;
  size_t count = 0;
  const auto [rest, error] = std::from_chars(extent.data(), extent.data() + extent.size(), count);
  if (error == std::errc()) {
    if (extent.ends_with("Lines")) {
      for (; count > 0 && position < text.size(); --count) {
        takeLine();
      }
    } else {
      position += std::min(count, text.size() - begin);
    }
    position = std::min(text.find_first_not_of(lineEnds, position), text.size());
    if (closesData(text.substr(position))) {
      return;
    }
  }
  position = begin;
  while (moreClosings && position < text.size()) {
    if (closesData(takeLine())) {
      return;
    }
  }
  moreClosings = false;
  position = begin;
}

}  // namespace quillpress
