#include "tools/quillpress/Converter.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>

namespace quillpress {

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

bool Converter::isUnfinished() {
  // Any operator that writes does; it comes from systemdict because a program may have given its
  // name another meaning.
  try {
    return run("10 systemdict /setmiterlimit get exec\n") != "10 M ";
  } catch (const ConversionFailure&) {
    return false;
  }
}

std::vector<const PdfObject*> Converter::objects() const {
  uint64_t count = 0;
  PdfObject* const* records = PSGetPdfObjects(handle.get(), &count);
  return {records, records + count};
}

}  // namespace quillpress
