#include "tools/quillpress/DscDocument.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "tools/quillpress/DscComments.h"

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

// "left bottom right top" in any white space; none when it is no such box or an empty one.
std::optional<Box> parseBox(std::string_view text) {
  std::array<double, 4> numbers{};
  for (double& number : numbers) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || !std::isfinite(number)) {
      return std::nullopt;
    }
    text.remove_prefix(static_cast<size_t>(rest - text.data()));
  }
  const Box box{numbers[0], numbers[1], numbers[2], numbers[3]};
  return box.left < box.right && box.bottom < box.top ? std::optional(box) : std::nullopt;
}

// A box that a comment names: the first one counts, unless it says "(atend)"; then the last does.
class NamedBox {
 public:
  void read(std::string_view value) {
    if (found && !atEnd) {
      return;
    }
    if (value.starts_with("(atend)")) {
      atEnd = true;
    } else if (const auto box = parseBox(value)) {
      found = box;
    }
  }
  std::optional<Box> box() const { return found; }

 private:
  std::optional<Box> found;
  bool atEnd = false;
};

// Where things stand in the text, and the boxes that were named on the way.
struct Outline {
  std::vector<size_t> pageStarts;
  std::vector<NamedBox> pageBoxes;  // one for each start
  NamedBox documentBox;
  NamedBox defaultPageBox;
  std::optional<size_t> trailer;
};

Outline outlineOf(std::string_view text) {
  Outline outline;
  DscComments comments(text);
  while (const auto comment = comments.next()) {
    const bool inPages = !outline.pageStarts.empty();
    if (comment->keyword == "Page:") {
      outline.pageStarts.push_back(comment->offset);
      outline.pageBoxes.emplace_back();
      outline.trailer.reset();
    } else if (comment->keyword == "Trailer") {
      outline.trailer = comment->offset;
    } else if (comment->keyword == "BoundingBox:" && (!inPages || outline.trailer)) {
      outline.documentBox.read(comment->value);
    } else if (comment->keyword == "PageBoundingBox:") {
      (inPages ? outline.pageBoxes.back() : outline.defaultPageBox).read(comment->value);
    }
  }
  return outline;
}

}  // namespace

DscDocument::DscDocument(std::string file) : bytes(std::move(file)) {
  bytes = std::string(withoutEndOfTransmission(withoutPrinterCommands(withoutDosHeader(bytes))));
  bytes += '\n';
  const std::string_view text = bytes;
  const Outline outline = outlineOf(text);
  const auto& starts = outline.pageStarts;
  const auto pageBox = outline.defaultPageBox.box();
  const auto commonBox = pageBox ? pageBox : outline.documentBox.box();
  if (starts.empty()) {
    pageList.push_back({text, commonBox});
    return;
  }
  prologText = text.substr(0, starts.front());
  for (size_t i = 0; i < starts.size(); ++i) {
    const size_t end =
        i + 1 < starts.size() ? starts[i + 1] : outline.trailer.value_or(text.size());
    const auto ownBox = outline.pageBoxes[i].box();
    pageList.push_back({text.substr(starts[i], end - starts[i]), ownBox ? ownBox : commonBox});
  }
}

}  // namespace quillpress
