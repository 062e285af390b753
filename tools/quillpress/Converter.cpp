#include "tools/quillpress/Converter.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>

namespace quillpress {
namespace {

// Any operator that writes does; it comes from systemdict because a program may have given its name
// another meaning.
constexpr std::string_view probe = "10 systemdict /setmiterlimit get exec\n";
constexpr std::string_view probeText = "10 M ";

}  // namespace

Converter::Converter(const Matrix& matrix) {
  std::transform(matrix.begin(), matrix.end(), pageMatrix.begin(),
                 [](double number) { return static_cast<float>(number); });
  handle.reset(PSOpen(pageMatrix.data()));
  if (!handle) {
    throw std::bad_alloc();
  }
}

void Converter::startPage() {
  PSStartPage(handle.get(), pageMatrix.data());
}

std::string Converter::run(std::string_view piece) {
  if (piece.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max())) {
    throw ConversionFailure("has more than the 2147483647 bytes that one page may have");
  }
  auto length = static_cast<int32_t>(piece.size());
  const char* text = PSConvertToPdf(handle.get(), piece.data(), &length);
  if (text == nullptr) {
    std::string words = PSGetErrorStr(handle.get());
    words.erase(std::min(words.find_last_not_of('\n') + 1, words.size()));
    throw ConversionFailure(words.empty() ? "failed, and the library does not say why" : words);
  }
  return {text, static_cast<size_t>(length)};
}

// What is open swallows a piece that would write something, or swallows only its beginning, and
// then the rest makes no sense but a second piece is run as it should. When neither is run,
// something else is wrong, such as an empty dictionary stack.
bool Converter::isUnfinished() {
  const auto answer = answerOf(probe);
  return answer ? *answer != probeText : answerOf(probe) == probeText;
}

std::optional<std::string> Converter::answerOf(std::string_view piece) {
  try {
    return run(piece);
  } catch (const ConversionFailure&) {
    return std::nullopt;
  }
}

std::vector<const PdfObject*> Converter::objects() const {
  uint64_t count = 0;
  PdfObject* const* records = PSGetPdfObjects(handle.get(), &count);
  return {records, records + count};
}

}  // namespace quillpress
