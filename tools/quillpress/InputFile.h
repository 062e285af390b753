// InputFile: PostScript from a file, whatever it came wrapped in; what is none is called what it
// is.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "tools/quillpress/Files.h"

namespace quillpress {

class InputFile {
 public:
  // "-" is standard input. Throws FileFailure, which says what the file is when it is no
  // PostScript.
  explicit InputFile(const std::string& path);

  std::string_view bytes() const { return bytes_; }

 private:
  std::unique_ptr<FileBytes> file_;
  std::string unpacked_;
  std::string_view bytes_;
};

// "standard input" for "-".
std::string shownName(const std::string& path);

// What these bytes are when they are no PostScript, such as "a PNG image"; empty when they may be.
std::string_view foreignKind(std::string_view bytes);

}  // namespace quillpress
