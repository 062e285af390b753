// The scanner keeps the last few numbers, and acts on each operator. The box of a path grows in
// user space and goes through the matrix when the path is painted or the matrix changes.
#include "tools/quillpress/ContentScan.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <vector>

namespace quillpress {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr Box nothing{infinity, infinity, -infinity, -infinity};

bool isEmpty(const Box& box) {
  return box.left > box.right;
}

void include(Box& box, double x, double y) {
  box.left = std::min(box.left, x);
  box.right = std::max(box.right, x);
  box.bottom = std::min(box.bottom, y);
  box.top = std::max(box.top, y);
}

void include(Box& box, const Box& other) {
  if (!isEmpty(other)) {
    include(box, other.left, other.bottom);
    include(box, other.right, other.top);
  }
}

Box transformed(const Box& box, const Matrix& m) {
  Box result = nothing;
  for (const double x : {box.left, box.right}) {
    for (const double y : {box.bottom, box.top}) {
      include(result, m[0] * x + m[2] * y + m[4], m[1] * x + m[3] * y + m[5]);
    }
  }
  return result;
}

constexpr double unit[] = {1,     1e-1,  1e-2,  1e-3,  1e-4,  1e-5,  1e-6,  1e-7,  1e-8, 1e-9,
                           1e-10, 1e-11, 1e-12, 1e-13, 1e-14, 1e-15, 1e-16, 1e-17, 1e-18};

enum CharKind : uint8_t { word, blank, number, name };

constexpr auto kinds = [] {
  std::array<uint8_t, 256> table{};
  for (const char c : {'\0', '\t', '\n', '\f', '\r', ' ', '[', ']'}) {
    table[static_cast<unsigned char>(c)] = blank;
  }
  for (const char c : {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', '-', '.'}) {
    table[static_cast<unsigned char>(c)] = number;
  }
  table['/'] = name;
  return table;
}();

uint8_t kindOf(char c) {
  return kinds[static_cast<unsigned char>(c)];
}

class Scanner {
 public:
  Scanner(std::string_view content, const Box& page, const Matrix& matrix)
      : content_(content), at_(content.data()), end_(content.data() + content.size()), page_(page) {
    state_ = matrix;
  }

  ContentScan scan() {
    while (at_ < end_) {
      switch (kindOf(*at_)) {
        case number:
          readNumber();
          break;
        case word:
          readWord();
          break;
        case name:
          readName();
          break;
        default:
          ++at_;
      }
    }
    if (!isEmpty(extent_)) {
      result_.marks.extent = extent_;
    }
    return std::move(result_);
  }

 private:
  void readNumber();
  void readWord();
  void readName();
  void act(std::string_view op);
  void actOnState(std::string_view op);
  void actOnObject(std::string_view op);
  void inlineImage();

  // The operand that so many others follow.
  double operand(size_t fromEnd) const { return operands_[(count_ - 1 - fromEnd) % keptOperands]; }
  void point(size_t fromEnd) { include(path_, operand(fromEnd + 1), operand(fromEnd)); }
  void segment(size_t points) {
    if (count_ >= 2 * points) {
      for (size_t i = 0; i < points; ++i) {
        point(2 * i);
      }
    }
    hasSegment_ = true;
  }
  // The path so far, in the page's coordinates.
  void settlePath() {
    if (!isEmpty(path_)) {
      include(settled_, transformed(path_, state_));
      path_ = nothing;
    }
  }
  void endPath() {
    path_ = settled_ = nothing;
    hasSegment_ = false;
  }
  void paintPath() {
    if (!hasSegment_) {
      result_.marks.lostPaths += pathIsLost_ ? 1 : 0;
    } else {
      settlePath();
      paint(settled_, result_.marks.paths);
    }
    endPath();
    pathIsLost_ = false;
  }
  void paint(const Box& box, size_t& count) {
    ++count;
    include(extent_, box);
    // A line on the page's edge shows half of its width.
    constexpr double margin = 1;
    if (box.right < page_.left - margin || box.left > page_.right + margin ||
        box.top < page_.bottom - margin || box.bottom > page_.top + margin) {
      ++result_.marks.outside;
    }
  }

  static constexpr size_t keptOperands = 8;

  std::string_view content_;
  const char* at_;
  const char* end_;
  Box page_;
  ContentScan result_;
  std::array<double, keptOperands> operands_{};
  size_t count_ = 0;
  std::string_view lastName_;
  Matrix state_{};
  struct Saved {
    Matrix matrix;
    bool hadSegment;
  };
  std::vector<Saved> saved_;
  Box path_ = nothing;
  Box settled_ = nothing;
  Box extent_ = nothing;
  bool hasSegment_ = false;
  bool pathIsLost_ = false;
};

void Scanner::readNumber() {
  const bool isNegative = *at_ == '-';
  at_ += isNegative ? 1 : 0;
  uint64_t digits = 0;
  double value = 0;
  const char* const begin = at_;
  while (at_ < end_ && *at_ >= '0' && *at_ <= '9' && at_ - begin < 18) {
    digits = digits * 10 + static_cast<uint64_t>(*at_++ - '0');
  }
  value = static_cast<double>(digits);
  while (at_ < end_ && *at_ >= '0' && *at_ <= '9') {
    value = value * 10 + (*at_++ - '0');
  }
  if (at_ < end_ && *at_ == '.') {
    ++at_;
    uint64_t decimals = 0;
    const char* const point = at_;
    while (at_ < end_ && *at_ >= '0' && *at_ <= '9' && at_ - point < 18) {
      decimals = decimals * 10 + static_cast<uint64_t>(*at_++ - '0');
    }
    value += static_cast<double>(decimals) * unit[at_ - point];
  } else if (at_ == begin) {
    ++at_;  // a lone sign, which nothing writes
  }
  operands_[count_++ % keptOperands] = isNegative ? -value : value;
}

void Scanner::readName() {
  const char* const begin = at_++;
  while (at_ < end_ && (kindOf(*at_) == word || kindOf(*at_) == number)) {
    ++at_;
  }
  lastName_ = {begin, static_cast<size_t>(at_ - begin)};
}

void Scanner::readWord() {
  const char* const begin = at_++;
  while (at_ < end_ && kindOf(*at_) == word) {
    ++at_;
  }
  const std::string_view op(begin, static_cast<size_t>(at_ - begin));
  act(op);
  count_ = 0;
}

void Scanner::act(std::string_view op) {
  if (op.size() > 1) {
    return op == "re" ? (segment(2), void()) : actOnObject(op);
  }
  switch (op[0]) {
    case 'm':
      pathIsLost_ = false;
      if (count_ >= 2) {
        point(0);
      }
      break;
    case 'l':
      segment(1);
      break;
    case 'c':
      segment(3);
      break;
    case 'S':
    case 'f':
      paintPath();
      break;
    case 'n':
      endPath();
      break;
    case 'q':
    case 'Q':
      actOnState(op);
      break;
    default:  // parameters and colours
      break;
  }
}

void Scanner::actOnState(std::string_view op) {
  settlePath();
  if (op == "q") {
    ++result_.savesWithoutRestore;
    saved_.push_back({state_, hasSegment_});
  } else if (op == "Q" && result_.savesWithoutRestore > 0) {
    --result_.savesWithoutRestore;
    state_ = saved_.back().matrix;
    // PostScript has the path again that was there at gsave; PDF does not.
    pathIsLost_ = saved_.back().hadSegment && !hasSegment_;
    saved_.pop_back();
  } else if (op == "Q") {
    ++result_.restoresWithoutSave;
  } else if (count_ >= 6) {
    state_ =
        multiply({operand(5), operand(4), operand(3), operand(2), operand(1), operand(0)}, state_);
  }
}

void Scanner::actOnObject(std::string_view op) {
  constexpr Box unitSquare{0, 0, 1, 1};
  if (op == "cm") {
    actOnState(op);
  } else if (op == "f*") {
    paintPath();
  } else if (op == "Do") {
    result_.names.emplace(lastName_);
    paint(transformed(unitSquare, state_), result_.marks.images);
  } else if (op == "scn") {
    result_.names.emplace(lastName_);
    ++result_.marks.patterns;
  } else if (op == "BI") {
    inlineImage();
  }
}

// The number behind a key of an inline image; 0 when it is not there.
int64_t entry(std::string_view entries, std::string_view key) {
  const size_t place = entries.find(key);
  return place == std::string_view::npos
             ? 0
             : std::strtoll(std::string(entries.substr(place + key.size(), 20)).c_str(), nullptr,
                            10);
}

// The samples may hold anything, the mark of their end too; but an image has at least as many bytes
// as its size asks for. A mask may have fewer.
void Scanner::inlineImage() {
  const std::string_view rest = content_.substr(static_cast<size_t>(at_ - content_.data()));
  constexpr std::string_view begin = "\nID\n";
  const size_t entriesEnd = std::min(rest.find(begin), rest.size());
  const std::string_view entries = rest.substr(0, entriesEnd);
  const bool isMask = entries.find("/ImageMask") != std::string_view::npos;
  const int64_t components = entries.find("/RGB") != std::string_view::npos    ? 3
                             : entries.find("/CMYK") != std::string_view::npos ? 4
                                                                               : 1;
  const auto bytes = static_cast<int32_t>(static_cast<uint32_t>(entry(entries, "/BPC ")) *
                                          static_cast<uint32_t>(entry(entries, "/H ")) *
                                          static_cast<uint32_t>(components) *
                                          static_cast<uint32_t>(entry(entries, "/W "))) /
                     8;
  const size_t least = isMask ? 0 : static_cast<size_t>(std::max(bytes, 0));
  const size_t data = std::min(entriesEnd + begin.size() + least, rest.size());
  const size_t dataEnd = rest.find("\nEI\n", data);
  at_ = dataEnd == std::string_view::npos ? end_ : rest.data() + dataEnd + 4;
  constexpr Box unitSquare{0, 0, 1, 1};
  paint(transformed(unitSquare, state_), isMask ? result_.marks.masks : result_.marks.images);
}

}  // namespace

ContentScan scanContent(std::string_view content, const Box& page, const Matrix& matrix) {
  return Scanner(content, page, matrix).scan();
}

void balance(std::string& content, const ContentScan& scan) {
  std::string saves;
  for (size_t i = 0; i < scan.restoresWithoutSave; ++i) {
    saves += "q\n";
  }
  if (!saves.empty()) {
    content.insert(0, saves);
  }
  for (size_t i = 0; i < scan.savesWithoutRestore; ++i) {
    content += "\nQ";
  }
}

}  // namespace quillpress
