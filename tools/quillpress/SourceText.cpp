#include "tools/quillpress/SourceText.h"

#include <algorithm>

namespace quillpress {
namespace {

constexpr std::string_view lineEnds = "\r\n";
constexpr std::string_view whiteSpace("\0\t\n\f\r ", 6);
constexpr std::string_view delimiters("\0\t\n\f\r ()<>[]{}/%", 16);

size_t nextLine(std::string_view text, size_t begin) {
  const size_t end = std::min(text.find_first_of(lineEnds, begin), text.size());
  return std::min(end + (text.substr(end, 2) == "\r\n" ? 2 : 1), text.size());
}

// Follows strings and comments over a program's bytes.
class StringFollower {
 public:
  bool inString() const { return depth_ > 0 || inAngle_; }
  void startLine() { inComment_ = false; }
  void take(char c) {
    if (escaped_) {
      escaped_ = false;
    } else if (depth_ > 0) {
      escaped_ = c == '\\';
      depth_ += c == '(' ? 1 : c == ')' ? -1 : 0;
    } else if (inAngle_) {
      inAngle_ = c != '>';
    } else if (!inComment_) {
      inComment_ = c == '%';
      depth_ = c == '(' ? 1 : 0;
      inAngle_ = c == '<';
    }
  }

 private:
  int depth_ = 0;
  bool inAngle_ = false;
  bool inComment_ = false;
  bool escaped_ = false;
};

}  // namespace

SourcePlace SourceText::placeOf(size_t offset) {
  offset = std::min(offset, text_.size());
  if (offset < knownStart_) {
    knownLine_ = 1;
    knownStart_ = 0;
  }
  for (;;) {
    const size_t next = nextLine(text_, knownStart_);
    if (next > offset || next == text_.size()) {
      return {knownLine_, offset - knownStart_ + 1};
    }
    ++knownLine_;
    knownStart_ = next;
  }
}

std::string_view SourceText::tokenBefore(size_t offset) const {
  const std::string_view before = text_.substr(0, offset);
  const size_t last = before.find_last_not_of(whiteSpace);
  if (last == std::string_view::npos) {
    return {};
  }
  if (delimiters.find(before[last]) != std::string_view::npos) {
    return text_.substr(last, 1);
  }
  size_t begin = before.find_last_of(delimiters, last) + 1;
  if (begin > 0 && before[begin - 1] == '/') {
    --begin;
  }
  return text_.substr(begin, last + 1 - begin);
}

std::string_view SourceText::lineOf(size_t offset) const {
  offset = std::min(offset, text_.size());
  const size_t begin = offset == 0 ? 0 : text_.find_last_of(lineEnds, offset - 1) + 1;
  const size_t end = std::min(text_.find_first_of(lineEnds, offset), text_.size());
  const std::string_view line = text_.substr(begin, end - begin);
  const size_t first = std::min(line.find_first_not_of(" \t"), line.size());
  return line.substr(first, line.find_last_not_of(" \t") + 1 - first);
}

std::string printable(std::string_view text, size_t limit) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isPlain = byte >= ' ' && byte < 0x7F;
    if (result.size() + (isPlain ? 1 : 4) > limit) {
      return result.substr(0, limit - 3) + "...";
    }
    if (isPlain) {
      result += c;
    } else {
      result.append("\\x").append(1, digits[byte >> 4]).append(1, digits[byte & 15]);
    }
  }
  return result;
}

size_t endOfPiece(std::string_view program, size_t begin) {
  // Data that happens to open a string must not take the rest of the page with it.
  constexpr size_t longestPiece = 65536;
  StringFollower follower;
  size_t end = begin;
  do {
    follower.startLine();
    const size_t next = nextLine(program, end);
    for (; end < next; ++end) {
      follower.take(program[end]);
    }
  } while (follower.inString() && end < program.size() && end - begin < longestPiece);
  return end;
}

}  // namespace quillpress
