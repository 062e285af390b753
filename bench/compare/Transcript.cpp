#include "bench/compare/Transcript.h"

#include <cstring>

namespace bench {

namespace {

// What each call is asked for beside its text.
constexpr int32_t untouched = -12345;

void tellObject(const PdfObject& object, std::string& out) {
  out += "object " + std::to_string(object.kind) + " " + object.name + " compress " +
         std::to_string(object.compress) + " reserved " + std::to_string(object.reserved) +
         (object.extra ? " extra" : "") + (object.source ? " source" : "") + "\n";
  // The record of a pattern that failed has an empty dictionary or, in older builds, a null one.
  out += object.dictionary ? object.dictionary : "";
  out += "\ndata " + std::to_string(object.dataLength) + "\n";
  if (object.data) {
    out.append(reinterpret_cast<const char*>(object.data), object.dataLength);
  }
  out += "\n";
}

class Run {
 public:
  explicit Run(const ConverterLibrary& library) : library_(library) {
    converters_[0] = open();
    library_.objects(converters_[0], &known_);
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;
  ~Run() {
    library_.close(converters_[0]);
    library_.close(converters_[1]);
  }

  void call(const programs::Call& call) {
    void*& converter = converters_[call.secondConverter];
    if (!converter) {
      converter = open();
    }
    out_ += call.secondConverter ? "second " : "";
    if (call.kind == programs::Call::Kind::startPage) {
      library_.startPage(converter, programs::matrices[call.matrix].data());
      out_ += "page\n";
    } else {
      convert(converter, call);
    }
    tellNewObjects(converter);
  }

  std::string out() { return std::move(out_); }

 private:
  void* open() const { return library_.open(programs::matrices[0].data()); }

  void convert(void* converter, const programs::Call& call) {
    const bool nul = call.kind == programs::Call::Kind::convertNul;
    int32_t length = nul ? untouched : static_cast<int32_t>(call.text.size());
    const int32_t before = length;
    const char* text = library_.convert(converter, call.text.c_str(), &length);
    if (text) {
      out_ += "text " + std::to_string(length) + (text[length] == '\0' ? "\n" : " without NUL\n");
      out_.append(text, static_cast<size_t>(length));
      out_ += "\n";
    } else {
      out_ += length == before ? "failed\n" : "failed, length changed\n";
    }
    out_ += "error [" + std::string(library_.error(converter)) + "]\n";
  }

  void tellNewObjects(void* converter) {
    uint64_t count = 0;
    PdfObject* const* objects = library_.objects(converter, &count);
    out_ += "objects " + std::to_string(count) + "\n";
    for (; known_ < count; ++known_) {
      tellObject(*objects[known_], out_);
    }
    known_ = count;
  }

  const ConverterLibrary& library_;
  void* converters_[2] = {nullptr, nullptr};
  uint64_t known_ = 0;
  std::string out_;
};

}  // namespace

std::string transcriptOf(const ConverterLibrary& library, const programs::Program& program) {
  Run run(library);
  for (const programs::Call& call : program) {
    run.call(call);
  }
  return run.out();
}

std::string allObjects(const ConverterLibrary& library) {
  void* converter = library.open(programs::matrices[0].data());
  uint64_t count = 0;
  PdfObject* const* objects = library.objects(converter, &count);
  std::string out;
  for (uint64_t i = 0; i < count; ++i) {
    tellObject(*objects[i], out);
  }
  library.close(converter);
  return out;
}

uint64_t hashOf(const std::string& text) {
  uint64_t hash = 0xcbf29ce484222325u;
  size_t at = 0;
  for (; at + 8 <= text.size(); at += 8) {
    uint64_t word;
    std::memcpy(&word, text.data() + at, 8);
    hash = (hash ^ word) * 0x9E3779B97F4A7C15u;
    hash ^= hash >> 29;
  }
  for (; at < text.size(); ++at) {
    hash = (hash ^ static_cast<unsigned char>(text[at])) * 0x100000001b3u;
  }
  return hash ^ text.size();
}

std::string printable(const std::string& text) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string out;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n' || (byte >= 32 && byte < 127)) {
      out += c;
    } else {
      out += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
    }
  }
  return out;
}

}  // namespace bench
