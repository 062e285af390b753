#include "tools/quillpress/DscDocument.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "tools/quillpress/DscComments.h"
#include "tools/quillpress/PaperSize.h"

namespace quillpress {
namespace {

constexpr char endOfTransmission = '\x04';
constexpr std::string_view whiteSpace("\0\t\n\f\r ", 6);

// The four bytes at an offset, least significant first.
uint32_t wordAt(std::string_view bytes, size_t offset) {
  uint32_t word = 0;
  for (size_t i = 4; i-- > 0;) {
    word = (word << 8) | static_cast<unsigned char>(bytes[offset + i]);
  }
  return word;
}

// A DOS EPS file begins with a header of 30 bytes that says where the PostScript lies in it, for
// previews in other forms follow.
std::string_view withoutDosHeader(std::string_view file) {
  constexpr std::string_view magic = "\xC5\xD0\xD3\xC6";
  constexpr size_t headerLength = 30;
  if (!file.starts_with(magic) || file.size() < headerLength) {
    return file;
  }
  const size_t begin = wordAt(file, 4);
  const size_t length = wordAt(file, 8);
  if (begin > file.size() || length > file.size() - begin) {
    throw std::invalid_argument(
        "the DOS EPS header of the input points outside of it; get the file anew");
  }
  return file.substr(begin, length);
}

// A spooled job may stand between commands to the printer, each batch of which begins with an
// escape sequence.
std::string_view withoutPrinterCommands(std::string_view text) {
  constexpr std::string_view escape = "\x1B%-12345X";
  const size_t begin = text.find("%!");
  if (!text.starts_with(escape) || begin == std::string_view::npos) {
    return text;
  }
  text.remove_prefix(begin);
  return text.substr(0, text.rfind(escape));
}

std::string_view withoutEndOfTransmission(std::string_view text) {
  while (text.starts_with(endOfTransmission)) {
    text.remove_prefix(1);
  }
  size_t last = text.find_last_not_of(whiteSpace);
  while (last != std::string_view::npos && text[last] == endOfTransmission) {
    text = text.substr(0, last);
    last = text.find_last_not_of(whiteSpace);
  }
  return text;
}

// As many numbers as the array has, in any white space; none if there are fewer.
template <size_t count>
std::optional<std::array<double, count>> parseNumbers(std::string_view text) {
  std::array<double, count> numbers{};
  for (double& number : numbers) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || !std::isfinite(number)) {
      return std::nullopt;
    }
    text.remove_prefix(static_cast<size_t>(rest - text.data()));
  }
  return numbers;
}

// "left bottom right top"; none when it is no such box or one that no page can have.
std::optional<Box> parseBox(std::string_view text) {
  const auto numbers = parseNumbers<4>(text);
  if (!numbers) {
    return std::nullopt;
  }
  const Box box{(*numbers)[0], (*numbers)[1], (*numbers)[2], (*numbers)[3]};
  return isPossiblePage(box) ? std::optional(box) : std::nullopt;
}

std::optional<Box> parseSize(std::string_view text) {
  const auto numbers = parseNumbers<2>(text);
  if (!numbers) {
    return std::nullopt;
  }
  const Box box{0, 0, (*numbers)[0], (*numbers)[1]};
  return isPossiblePage(box) ? std::optional(box) : std::nullopt;
}

// A value that a comment gives: the first one counts, unless it says "(atend)"; then the last does.
template <class Value>
class NamedValue {
 public:
  void read(std::string_view text, std::optional<Value> (*parse)(std::string_view)) {
    if (found_ && !atEnd_) {
      return;
    }
    if (text.starts_with("(atend)")) {
      atEnd_ = true;
    } else if (const auto value = parse(text)) {
      found_ = value;
    }
  }
  const std::optional<Value>& value() const { return found_; }

 private:
  std::optional<Value> found_;
  bool atEnd_ = false;
};

std::optional<int> parseOrientation(std::string_view text) {
  if (text.starts_with("Landscape")) {
    return 90;
  }
  if (text.starts_with("Seascape")) {
    return 270;
  }
  return text.starts_with("Portrait") ? std::optional(0) : std::nullopt;
}

// The matrix by which the page has been turned: the x axis tells all.
std::optional<int> parseViewingOrientation(std::string_view text) {
  const auto numbers = parseNumbers<4>(text);
  if (!numbers) {
    return std::nullopt;
  }
  const auto [xx, xy, yx, yy] = *numbers;
  if (xy != 0) {
    return xy > 0 ? 90 : 270;
  }
  return xx < 0 ? 180 : 0;
}

// "A4 595 842 0 () ()": a name and a size.
std::string_view firstWord(std::string_view text) {
  return text.substr(0, text.find_first_of(" \t"));
}

// The size in "/PageSize [595 842]", as a call of setpagedevice has it, where the text does not
// stand in a procedure, which may never run.
std::optional<Box> pageSizeIn(std::string_view text) {
  constexpr size_t farthest = 1 << 20;
  constexpr std::string_view key = "/PageSize";
  text = text.substr(0, farthest);
  for (size_t place = text.find(key); place != std::string_view::npos;
       place = text.find(key, place + 1)) {
    const std::string_view rest = text.substr(place + key.size());
    const size_t bracket = std::min(rest.find_first_not_of(" \t\r\n"), rest.size());
    const size_t lineStart = text.find_last_of("\r\n", place) + 1;
    const bool inProcedure =
        text.substr(lineStart, place - lineStart).find('{') != std::string_view::npos;
    if (!inProcedure && rest.substr(bracket).starts_with('[') &&
        rest.substr(0, 400).find("setpagedevice") != std::string_view::npos) {
      return parseSize(rest.substr(bracket + 1));
    }
  }
  return std::nullopt;
}

// What the comments of a page, or those before all pages, say of its paper.
struct Paper {
  std::optional<std::string> media;
  NamedValue<Box> box;
  NamedValue<int> orientation;
  std::optional<Box> feature;
};

std::string withoutParentheses(std::string_view text) {
  if (text.size() >= 2 && text.front() == '(' && text.back() == ')') {
    text = text.substr(1, text.size() - 2);
  }
  return std::string(text);
}

// Where things stand in the text, and what was said on the way.
class Outline {
 public:
  explicit Outline(std::string_view text);

  struct Start {
    size_t offset;
    std::string label;
    Paper paper;
  };

  std::optional<Box> boxOf(const Paper& paper, std::string_view program) const;
  int rotationOf(const Paper& paper) const {
    const auto& own = paper.orientation.value();
    return own ? *own : common.orientation.value().value_or(0);
  }

  std::vector<Start> starts;
  std::optional<size_t> trailer;
  Paper common;
  DscInfo info;

 private:
  void read(const DscComment& comment);
  void readHeader(const DscComment& comment);
  void readMedia(std::string_view value);

  bool isEps_;
  NamedValue<Box> bounds_;
  NamedValue<Box> exactBounds_;
  std::map<std::string, Box, std::less<>> media_;
  std::optional<Box> firstMedia_;
  std::optional<Box> paperSize_;
  bool inMedia_ = false;
};

Outline::Outline(std::string_view text)
    : isEps_(text.substr(0, text.find_first_of("\r\n")).find("EPSF") != std::string_view::npos) {
  DscComments comments(text);
  while (const auto comment = comments.next()) {
    read(*comment);
  }
  const size_t setupEnd = starts.empty() ? text.size() : starts.front().offset;
  if (!common.feature) {
    common.feature = pageSizeIn(text.substr(0, setupEnd));
  }
}

void Outline::read(const DscComment& comment) {
  const std::string_view keyword = comment.keyword;
  const std::string_view value = comment.value;
  Paper& paper = starts.empty() ? common : starts.back().paper;
  inMedia_ = keyword == "DocumentMedia:" || (inMedia_ && keyword == "+");
  if (inMedia_) {
    readMedia(value);
  } else if (keyword == "Page:") {
    starts.push_back({comment.offset, std::string(value.substr(0, value.find_last_of(" \t"))), {}});
    trailer.reset();
  } else if (keyword == "Trailer") {
    trailer = comment.offset;
  } else if (keyword == "PageMedia:") {
    paper.media = firstWord(value);
  } else if (keyword == "PageBoundingBox:") {
    paper.box.read(value, parseBox);
  } else if (keyword == "PageOrientation:") {
    paper.orientation.read(value, parseOrientation);
  } else if (keyword == "ViewingOrientation:") {
    paper.orientation.read(value, parseViewingOrientation);
  } else if (keyword == "BeginFeature:" && value.starts_with("*PageSize ")) {
    paper.feature = namedPaper(firstWord(value.substr(10)));
  } else if (starts.empty() || trailer) {
    readHeader(comment);
  }
}

void Outline::readHeader(const DscComment& comment) {
  const std::string_view value = comment.value;
  const std::pair<std::string_view, std::string*> texts[] = {{"Title:", &info.title},
                                                             {"For:", &info.author},
                                                             {"Creator:", &info.creator},
                                                             {"Subject:", &info.subject}};
  for (const auto& [keyword, text] : texts) {
    if (comment.keyword == keyword && text->empty() && !value.starts_with("(atend)")) {
      *text = withoutParentheses(value);
    }
  }
  if (comment.keyword == "BoundingBox:") {
    bounds_.read(value, parseBox);
  } else if (comment.keyword == "HiResBoundingBox:") {
    exactBounds_.read(value, parseBox);
  } else if (comment.keyword == "Orientation:") {
    common.orientation.read(value, parseOrientation);
  } else if (comment.keyword == "DocumentPaperSizes:" && !paperSize_) {
    paperSize_ = namedPaper(firstWord(value));
  }
}

void Outline::readMedia(std::string_view value) {
  const std::string_view name = firstWord(value);
  if (const auto size = parseSize(value.substr(name.size()))) {
    media_.emplace(name, *size);
    firstMedia_ = firstMedia_ ? firstMedia_ : size;
  }
}

// An EPS file is a picture, as large as its bounds; a document has paper.
std::optional<Box> Outline::boxOf(const Paper& paper, std::string_view program) const {
  const auto& exact = exactBounds_.value();
  const auto& bounds = exact ? exact : bounds_.value();
  const auto& pageBox = paper.box.value() ? paper.box.value() : common.box.value();
  if (isEps_ && (pageBox || bounds)) {
    return pageBox ? pageBox : bounds;
  }
  const auto& media = paper.media ? paper.media : common.media;
  const auto found = media ? media_.find(*media) : media_.end();
  if (found != media_.end()) {
    return found->second;
  }
  // A page's own set-up stands at its beginning.
  const auto own = pageSizeIn(program.substr(0, 4096));
  for (const auto& size : {paper.feature, own, firstMedia_, common.feature, paperSize_, pageBox}) {
    if (size) {
      return size;
    }
  }
  return bounds;
}

}  // namespace

DscDocument::DscDocument(std::string_view file)
    : text_(withoutEndOfTransmission(withoutPrinterCommands(withoutDosHeader(file)))) {
  const Outline outline(text_);
  const auto& starts = outline.starts;
  info_ = outline.info;
  hasPageComments_ = !starts.empty();
  if (starts.empty()) {
    pages_.push_back({text_, "", outline.boxOf({}, {}), outline.rotationOf({})});
    return;
  }
  prolog_ = text_.substr(0, starts.front().offset);
  for (size_t i = 0; i < starts.size(); ++i) {
    const size_t end =
        i + 1 < starts.size() ? starts[i + 1].offset : outline.trailer.value_or(text_.size());
    const std::string_view program = text_.substr(starts[i].offset, end - starts[i].offset);
    pages_.push_back({program, starts[i].label, outline.boxOf(starts[i].paper, program),
                      outline.rotationOf(starts[i].paper)});
  }
}

}  // namespace quillpress
