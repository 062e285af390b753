// Converter: one converter of the library, open as long as this lives.
#pragma once

#include <tqpumpd2k.h>

#include <array>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tools/quillpress/Geometry.h"

namespace quillpress {

// The library's words for what went wrong in a piece of PostScript.
class ConversionFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Converter {
 public:
  // Throws std::bad_alloc when the library gives none.
  explicit Converter(const Matrix& matrix);

  void startPage();

  // Runs a piece and gives the text that it wrote. Throws ConversionFailure.
  std::string run(std::string_view piece);

  // Whether a further piece would not be run but taken for the rest of what came before: of a
  // string or procedure that was not closed, or of data that an operator is still waiting for.
  bool isUnfinished();

  // All records that were made in this process. They outlive the converter.
  std::vector<const PdfObject*> objects() const;

 private:
  std::optional<std::string> answerOf(std::string_view piece);

  struct Close {
    void operator()(void* converter) const { PSClose(converter); }
  };

  std::array<float, 6> pageMatrix;
  std::unique_ptr<void, Close> handle;
};

}  // namespace quillpress
