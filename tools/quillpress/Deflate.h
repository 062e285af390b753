// Deflate: the compression of PDF streams, and of compressed input.
#pragma once

#include <memory>
#include <string>
#include <string_view>

struct libdeflate_compressor;

namespace quillpress {

// Compresses for /FlateDecode: the same bytes give the same result.
class Deflater {
 public:
  // Throws std::bad_alloc.
  Deflater();

  // Valid until the next call.
  std::string_view compress(std::string_view bytes);

 private:
  struct Free {
    void operator()(libdeflate_compressor* compressor) const;
  };
  std::unique_ptr<libdeflate_compressor, Free> compressor_;
  std::string room_;
};

bool isGzip(std::string_view bytes);

// What a gzip file holds. Throws std::invalid_argument when it is damaged.
std::string gunzip(std::string_view bytes);

}  // namespace quillpress
